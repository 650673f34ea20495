#include "ui/dialogs/site_dialog.h"

#include <QPushButton>

#include "ui/dialogs/site_fields.h"
#include "ui/shared/controls.h"
#include "ui/shared/message_boxes.h"
#include "ui/shared/texts.h"

namespace tessaril {
namespace {

// Twips.
constexpr int kWidth = 7008;
constexpr int kHeight = 5736;
constexpr int kLeft = 120;
constexpr int kColumn = 3312;
constexpr int kRight = kWidth - kLeft - kColumn;
constexpr int kWhole = kWidth - 2 * kLeft;
constexpr int kListsTop = 1560;
constexpr int kListStep = 1168;
constexpr int kLine = 264;
constexpr int kFootTop = kListsTop + 3 * kListStep + 24;

QRadioButton* MakeOption(QWidget* parent, const char* name, int top, const char* caption) {
  auto* const option = new QRadioButton(caption, parent);
  Put(*option, name, {kLeft, top, kWhole, kLine});
  return option;
}

}  // namespace

SiteDialog::SiteDialog(QWidget* parent) : KeptDialog(parent) {
  setObjectName("frmSite");
  setWindowTitle("Rules of this site");
  setFixedSize(Pixels(kWidth), Pixels(kHeight));
  MakeHead();
  MakeLists();
  MakeFoot();
}

void SiteDialog::MakeHead() {
  MakeLabel(this, "lblSite", {kLeft, 84, 480, kLine}, "Site:");
  Put(lblRoot, "lblRoot", {kLeft + 480, 84, kWhole - 480, kLine});
  lblFile = MakeLabel(this, "lblFile", {kLeft, 336, kWhole, kLine}, "");
  optToday =
      MakeOption(this, "optToday", 672, "&Today's rules: judge links and entities as browsers read them");
  optClassic = MakeOption(this, "optClassic", 924, "&Classic rules: judge them as without a site file");
  MakeLabel(this, "lblHint", {kLeft, 1236, kWhole, kLine},
            "One a line. * and ? stay within a name, ** crosses folders.");
}

void SiteDialog::MakeLists() {
  const struct {
    Entries entries;
    const char* name;
    const char* caption;
    const char* tooltip;
  } rows[] = {
      {&SiteRules::index, "txtIndex", "&Index files:",
       "Names of files that stand for their folder. A link to a folder without one is a finding"},
      {&SiteRules::ignore_files, "txtIgnoreFiles", "&Files that are not checked:",
       "Patterns: of names, or with \"/\" of paths from the site's folder on"},
      {&SiteRules::ignore_links, "txtIgnoreLinks", "&Links that are not checked:",
       "Patterns: of links as they are written, or of the paths that they lead to"},
      {&SiteRules::start, "txtStart", "&Start pages:",
       "Pages from which everything should be reachable. None: a file counts as linked when any page links "
       "to it"},
      {&SiteRules::allow_missing, "txtAllowMissing", "Targets made by the ser&ver:",
       "Patterns: files that links may lead to although they are not on the disk"},
      {&SiteRules::allow_unlinked, "txtAllowUnlinked",
       "Files that &need no link:", "Patterns: files that are not reported as unlinked"},
  };
  for (const auto& row : rows) {
    const int i = static_cast<int>(lists_.size());
    const int left = i < 3 ? kLeft : kRight;
    const int top = kListsTop + i % 3 * kListStep;
    QLabel* const label = MakeLabel(this, "", {left, top, kColumn, kLine}, row.caption);
    auto* const field = new QPlainTextEdit(this);
    Put(*field, row.name, {left, top + kLine, kColumn, kListStep - kLine - 60});
    field->setToolTip(row.tooltip);
    field->setTabChangesFocus(true);
    field->setLineWrapMode(QPlainTextEdit::NoWrap);
    field->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // would cover the only lines
    Tie(*label, *field);
    lists_.push_back({row.entries, field});
  }
}

void SiteDialog::MakeFoot() {
  constexpr int kBoxes = 4560;
  chkLowercase = MakeCheckBox(this, "chkLowercase", {kLeft, kFootTop, kBoxes, kLine},
                              "&Upper case in file names is a fault, too",
                              "Some servers tell Page.htm from page.htm, others do not");
  chkEntities = MakeCheckBox(this, "chkEntities", {kLeft, kFootTop + kLine, kBoxes, kLine},
                             "&Entities also on UTF-8 pages",
                             "Characters that have a name are findings, though browsers read them well");
  const int top = kFootTop + 168;
  QPushButton* const ok =
      MakeButton(this, "cmdOk", {kWidth - kLeft - 2040, top, 984, 300}, "&OK", "Write the site file");
  QPushButton* const cancel = MakeButton(this, "cmdCancel", {kWidth - kLeft - 984, top, 984, 300}, "Cancel",
                                         "Leave everything as it is");
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &SiteDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &SiteDialog::reject);
}

void SiteDialog::Edit(const Site& site, bool is_new, const Save& save) {
  save_ = save;
  lblRoot.SetText(Shown(site.root));
  lblFile->setText(is_new ? "It has no site file yet. OK makes one in this folder."
                          : "The site file is in this folder.");
  ShowRules(site.rules);
  (site.rules.rules == Rules::kToday ? optToday : optClassic)->setFocus();
  Show();
}

void SiteDialog::ShowRules(const SiteRules& rules) {
  shown_ = rules;
  (rules.rules == Rules::kToday ? optToday : optClassic)->setChecked(true);
  for (const List& list : lists_) list.field->setPlainText(AsLines(rules.*list.entries));
  chkLowercase->setChecked(rules.lowercase_names);
  chkEntities->setChecked(rules.ascii_entities);
}

void SiteDialog::ChangeRules(SiteRules& rules) const {
  const Rules chosen = optToday->isChecked() ? Rules::kToday : Rules::kClassic;
  if (chosen != shown_.rules) rules.rules = chosen;
  for (const auto& [entries, field] : lists_) {
    // Entries that a field shows as others, as one with blanks around it, stay unless the user changes them.
    if (field->document()->isModified()) rules.*entries = EntriesOf(field->toPlainText());
  }
  const auto take = [](const QCheckBox& box, bool shown, bool& rule) {
    if (box.isChecked() != shown) rule = box.isChecked();
  };
  take(*chkLowercase, shown_.lowercase_names, rules.lowercase_names);
  take(*chkEntities, shown_.ascii_entities, rules.ascii_entities);
}

void SiteDialog::accept() {
  SiteRules changed;
  ChangeRules(changed);
  if (const Status named = CheckIndexNames(changed.index); !named.ok()) {
    Tell(this, named.reason());
    return lists_.front().field->setFocus();
  }
  const Status saved = save_([this](SiteRules& rules) { ChangeRules(rules); });
  if (!saved.ok()) return Tell(this, "Not saved: " + saved.reason());
  KeptDialog::accept();
}

}  // namespace tessaril

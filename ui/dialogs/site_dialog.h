#ifndef TESSARIL_UI_DIALOGS_SITE_DIALOG_H_
#define TESSARIL_UI_DIALOGS_SITE_DIALOG_H_

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <functional>
#include <vector>

#include "engine/site_rules.h"
#include "engine/status.h"
#include "ui/dialogs/kept_dialog.h"
#include "ui/shared/cut_label.h"

namespace tessaril {

/// frmSite: shows the rules of a site and lets the user change them.
class SiteDialog : public KeptDialog {
  Q_OBJECT

 public:
  explicit SiteDialog(QWidget* parent = nullptr);

  /// Puts what the user changed into rules; all else of them stays.
  using Change = std::function<void(SiteRules& rules)>;

  /// Keeps a change; the reason of a failure is told, and the user may try again.
  using Save = std::function<Status(const Change& change)>;

  /// Shows the dialog and waits until the change is kept, or given up. `is_new`: nothing says yet what the
  /// rules of the site are.
  void Edit(const Site& site, bool is_new, const Save& save);

  void accept() override;

 private:
  using Entries = std::vector<std::string> SiteRules::*;
  struct List {
    Entries entries;
    QPlainTextEdit* field;
  };

  void MakeHead();
  void MakeLists();
  void MakeFoot();
  void ShowRules(const SiteRules& rules);
  void ChangeRules(SiteRules& rules) const;

  CutLabel lblRoot{Qt::ElideMiddle, this};
  QLabel* lblFile;
  QRadioButton* optToday;
  QRadioButton* optClassic;
  std::vector<List> lists_;  // that of index files first
  QCheckBox* chkLowercase;
  QCheckBox* chkEntities;
  SiteRules shown_;
  Save save_;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_DIALOGS_SITE_DIALOG_H_

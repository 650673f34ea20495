// The site file of the open folder, as far as the main window shows it, changes it and runs by it.

#include "engine/paths.h"
#include "site/site_choice.h"
#include "site/site_file.h"
#include "ui/main/main_window.h"
#include "ui/shared/message_boxes.h"
#include "ui/shared/texts.h"

namespace tessaril {
namespace {

bool HasRules(Function function) {
  return function == Function::kLinks || function == Function::kEntities;
}

Status MakeSite(Site site, const SiteDialog::Change& change) {
  change(site.rules);
  return CreateSiteFile(site.root, site.rules);
}

// What was changed on the disk since `shown` was read stays, where the user did not change the same.
Status ChangeSite(Files& files, const Site& shown, const SiteDialog::Change& change) {
  std::optional<Site> now;
  if (Status loaded = LoadSite(files, shown.root, now); !loaded.ok()) return loaded;
  if (!now || now->root != shown.root) now = shown;
  change(now->rules);
  return SaveSiteRules(files, shown.root, now->rules);
}

}  // namespace

bool MainWindow::HasSiteFile() const {
  return !FindSiteFile(Picture1.dirList->OpenFolder()).empty();
}

// The user may have moved the current folder and put another in its place.
void MainWindow::EnterAnew() {
  (void)session_.files.EnterFolder(session_.files.CurrentFolder());
}

void MainWindow::ChangeSiteRules() {
  EnterAnew();
  const std::string& folder = Picture1.dirList->OpenFolder();
  std::optional<Site> site;
  if (const Status loaded = LoadSite(session_.files, folder, site); !loaded.ok()) {
    return Tell(this, loaded.reason());
  }
  const bool is_new = !site;
  if (is_new) site = Site{folder, {}};
  if (frmSite == nullptr) frmSite = new SiteDialog(this);
  frmSite->Edit(*site, is_new, [&](const SiteDialog::Change& change) {
    return is_new ? MakeSite(*site, change) : ChangeSite(session_.files, *site, change);
  });
  Picture1.filList->Refresh();
  ShowRules();
}

void MainWindow::RemoveSiteRules() {
  const std::string path = FindSiteFile(Picture1.dirList->OpenFolder());
  if (path.empty()) return;
  const std::string root(FolderOf(path));
  const std::string above = root == "/" ? std::string() : FindSiteFile(std::string(FolderOf(root)));
  const std::string then =
      above.empty() ? "The site is judged by classic rules then." : "Then this one holds:\r\n" + above;
  if (!AskOkCancel(this, "Delete the site file?\r\n" + path + "\r\n\r\n" + then)) return;
  if (const Status removed = RemoveSiteFile(root); !removed.ok()) {
    Tell(this, "Not deleted: " + removed.reason());
  }
  Picture1.filList->Refresh();
  ShowRules();
}

// No run is made on rules that are only half understood: false when the site file does not do, which is told.
bool MainWindow::TakeSite(RunOptions& options) {
  const Status chosen = ChooseSite(std::nullopt, session_.files, options);
  ShowRules();
  if (!chosen.ok()) Tell(this, chosen.reason());
  return chosen.ok();
}

// Without a site file nothing is shown.
void MainWindow::ShowRules() {
  EnterAnew();
  const std::string& folder = Picture1.dirList->OpenFolder();
  std::optional<Site> site;
  const Status loaded = LoadSite(session_.files, folder, site);
  QLabel& label = *Picture1.RulesLabel;
  label.setText(!site                                ? "The site file is not valid"
                : site->rules.rules == Rules::kToday ? "Judged by today's rules"
                                                     : "Judged by classic rules");
  label.setToolTip(AsMarkup(ShownLines(loaded.ok() ? FindSiteFile(folder) : loaded.reason())));
  label.setVisible(HasRules(applied_) && (site || !loaded.ok()));
  emit SiteShown();
}

}  // namespace tessaril

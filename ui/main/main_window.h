#ifndef TESSARIL_UI_MAIN_MAIN_WINDOW_H_
#define TESSARIL_UI_MAIN_MAIN_WINDOW_H_

#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <string>

#include "engine/search_run.h"
#include "ui/dialogs/replace_dialog.h"
#include "ui/dialogs/site_dialog.h"
#include "ui/main/options_panel.h"
#include "ui/main/program.h"
#include "ui/main/report_view.h"
#include "ui/main/results_panel.h"
#include "ui/main/window_host.h"
#include "ui/shared/session.h"

namespace tessaril {

class UndoPlan;

/// The window in which the user sets up and runs every function. Of its two panels one is shown at a time;
/// the three buttons at its edge lie on top of both.
class MainWindow : public QWidget, private RunStage {
  Q_OBJECT

 public:
  MainWindow(Session& session, Program& program, QWidget* parent = nullptr);

  /// What the settings file says.
  void SetCgiName(const QString& name);
  QString CgiName() const;
  void SetUpperCasePermitted(bool permitted);
  bool UpperCasePermitted() const;

  void SetShowFileCaption(const char* caption);
  void UseMonospacedFont(bool monospaced) { Picture2.UseMonospacedFont(monospaced); }

  /// Opens a folder in the folder list; false when it cannot be listed.
  bool OpenFolder(const std::string& folder);

  /// Shows the options panel, on the current folder.
  void ReturnToOptions();

  /// The same on the way back from the browser or the editor.
  void ReturnFromViewer();

  /// Whether "Show file" is the function that is selected, and the path of the file that it shows: empty when
  /// none is marked.
  bool IsToShowFile() const { return IsChosen(Function::kShowFile); }
  std::string FileToShow() const;

  /// Whether the page of external links is what the browser shows, by the function that is selected.
  bool IsToListLinks() const { return IsChosen(Function::kExternal); }

  /// Whether "Last Results" is offered; and whether the results box holds a line end.
  bool OffersResults() const { return !Picture1.cmdSeeResults->isHidden(); }
  bool HasResultLines() const;

  /// What the editor wants of the window: its buttons to be shown, the results with a way back to the editor,
  /// the files to be read again from the disk.
  void ShowPrintButton() { cmdUdskriv->show(); }
  void ShowSearch() { cmdSearch->show(); }
  void ShowResultsForEditor();
  void RefreshFiles() { Picture1.filList->Refresh(); }

  /// The site file of the open folder, in it or in a folder above: whether there is one; its rules shown and
  /// changed by the user, who may make one; and its end, after a question. Failures are told. ShowRules looks
  /// for it anew and shows by which rules the chosen function judges. None of these is for the time of a run.
  bool HasSiteFile() const;
  void ShowRules();
  void ChangeSiteRules();
  void RemoveSiteRules();

  /// Shows what an undo of the last run would restore, asks, does it and tells how it went. Not for the time
  /// of a run.
  void UndoLastRun();

  /// Whether a run is on. Then the program may be left only when RunEnded has been emitted.
  bool IsRunning() const { return running_; }

  /// Cancels the run because the program is to be left; no report is shown any more.
  void StopRun() { host_.CancelAndLeave(); }

 signals:
  void RunEnded();

  /// The site file has been looked for anew.
  void SiteShown();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  // The steps of a run.
  void BeginRun() override;
  void TakeTexts(const SearchTexts& texts) override;
  bool BeginWalk() override;
  void EndWalk() override;
  void ShowPage(const std::string& page) override;

  void Connect();
  void PressSearch();
  void ReturnFromResults();
  void Return();
  void PressExit();
  void SeeResults();
  void SaveAs();
  void Choose(Function function);
  void ShowFile();
  void FollowMarkedOnly();
  void ClickFile();
  void DoubleClickFile();
  void PickFilter();
  void ShowResultsPanel();
  void ShowToMainButton();
  void ShowSearchButton();
  void RestoreTexts();
  void EndRun(const RunEnd& end);
  void PlaceBtn();
  RunEnd Run();
  bool GoOnWithoutUndo(const std::string& reason);
  void AskAndUndo();
  void Undo(const UndoPlan& plan, Files& files);
  RunOptions TakeOptions() const;
  void EnterAnew();
  bool TakeSite(RunOptions& options);
  void OpenCommandLine();
  bool OpenAndEnter(const std::string& folder);
  void MarkFile(const std::string& name);
  bool IsChosen(Function function) const { return Picture1.Option1->Selected() == function; }

  Session& session_;
  Program& program_;
  OptionsPanel Picture1;
  ResultsPanel Picture2;
  QPushButton* cmdUdskriv;
  QPushButton* cmdSearch;
  QPushButton* cmdExit;
  ReplaceDialog frmReplace;
  SiteDialog* frmSite = nullptr;  // made when it is first needed
  ReportView view_;
  RunState state_;
  RunOptions options_;
  WindowHost host_;
  QTimer* Timer1;                           // idle while its interval is 0
  Function applied_ = Function::kEntities;  // the function that the panel is set up for
  bool running_ = false;
  bool folder_only_opened_ = false;  // the last press of Search did no more than that
};

}  // namespace tessaril

#endif  // TESSARIL_UI_MAIN_MAIN_WINDOW_H_

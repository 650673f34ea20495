#ifndef TESSARIL_UI_EDITOR_EDITOR_WINDOW_H_
#define TESSARIL_UI_EDITOR_EDITOR_WINDOW_H_

#include <QList>
#include <QMenu>
#include <QPushButton>
#include <QWidget>
#include <string>

#include "ui/editor/edit_box.h"
#include "ui/editor/edited_file.h"
#include "ui/editor/editor_find.h"
#include "ui/shared/cut_label.h"
#include "ui/shared/session.h"

namespace tessaril {

/// The window `frmEditor`: a text with the file that it belongs to, and the menus that the frame shows with
/// it. What leads out of the window, or needs another one, it only says.
class EditorWindow : public QWidget {
  Q_OBJECT

 public:
  explicit EditorWindow(Session& session, QWidget* parent = nullptr);

  /// Its menus, from left to right.
  const QList<QMenu*>& Menus() const { return menus_; }

  /// Before it is shown for another file: no line is named, the caret is in front.
  void Prepare();

  /// Before it is shown again with what it holds: no line is named, the caret stays.
  void ForgetLine();

  /// Whether the way to the results is offered.
  void OfferResults(bool offered);

  /// Takes up the text of a file, and makes the file the current one. Says so when it is too long to be
  /// shown. False when the file cannot be read: the text stays, and the current file is the text's.
  bool Load(const std::string& path);

  /// The text, and the path of its file; that is empty when there is none.
  std::string Text() const { return EditTekst->Bytes(); }
  const std::string& Path() const { return file_.path(); }

  /// Whether a file is the text's own, by whatever name; and whether the text may take its place then, which
  /// the user is asked where something could be lost.
  bool IsOwnFile(const std::string& path) const { return file_.IsAt(path); }
  bool MayOverwriteOwnFile();

  /// Gives the text the focus.
  void FocusText() { EditTekst->setFocus(); }

 signals:
  void ResultsWanted();
  void MainWanted();
  void BrowserWanted();
  void PrintingWanted(const std::string& text, const std::string& title);
  void PrinterFontWanted();
  void ExitWanted();
  void HelpWanted();
  void AboutBoxWanted();

  /// The text is in its file.
  void Saved();

  /// An empty text has taken the place of the one before.
  void NewBegun();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void MakeMenus();
  QMenu* AddMenu(const char* name, const char* caption);
  void ShowLine();
  void BeginNew();
  void Save();
  void SaveAs();
  void SaveInto(const std::string& path);
  std::string AskWhereToSave();
  void ShowFile();
  void LayOut();

  Session& session_;
  EditedFile file_;
  QPushButton* Gem;
  QPushButton* GemSom;
  QPushButton* MainScreen;
  QPushButton* Command2;
  QPushButton* Command3;
  QPushButton* cmdErrorList;
  CutLabel* Filname;
  QLabel* lblLine;
  EditBox* EditTekst;
  EditorFind find_;
  QList<QMenu*> menus_;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_EDITOR_EDITOR_WINDOW_H_

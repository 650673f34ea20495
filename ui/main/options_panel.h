#ifndef TESSARIL_UI_MAIN_OPTIONS_PANEL_H_
#define TESSARIL_UI_MAIN_OPTIONS_PANEL_H_

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <memory>

#include "engine/files.h"
#include "ui/main/drive_list.h"
#include "ui/main/file_list.h"
#include "ui/main/filter_box.h"
#include "ui/main/folder_list.h"
#include "ui/main/function_buttons.h"

namespace tessaril {

/// The panel `Picture1`: where to search, what for and how. It makes the controls and puts them in their
/// places; what they do to one another is the main window's.
class OptionsPanel : public QWidget {
  Q_OBJECT

 public:
  OptionsPanel(Files& files, QWidget* parent);

  DriveList* drvList;
  FolderList* dirList;
  FilterBox* cboSearchSpec;
  FileList* filList;
  QGroupBox* Frame1;
  std::unique_ptr<FunctionButtons> Option1;
  QGroupBox* Frame2;
  QCheckBox* ShowEach;
  QCheckBox* ULcase;
  QCheckBox* CGI;
  QLabel* CGIlabel;
  QLineEdit* CGIname;
  QLabel* SearchLabel;
  QLineEdit* SearchTekst;
  QCheckBox* UCfilename;
  QLabel* RulesLabel;  // by which rules a site with a site file is judged
  QLabel* ReplaceLabel;
  QLineEdit* ReplaceText;
  QCheckBox* chkTags;
  QCheckBox* MarkedOnly;  // its dynamic property "Tag" is what other windows restore it from
  QPushButton* cmdSeeResults;

 private:
  void MakeLists(Files& files);
  void MakeOptions();
};

}  // namespace tessaril

#endif  // TESSARIL_UI_MAIN_OPTIONS_PANEL_H_

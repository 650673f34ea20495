#include "ui/main/options_panel.h"

#include "ui/main/caption_frame.h"
#include "ui/main/search_text_box.h"
#include "ui/shared/controls.h"

namespace tessaril {

OptionsPanel::OptionsPanel(Files& files, QWidget* parent) : QWidget(parent) {
  Put(*this, "Picture1", {0, 0, 7620, 5232});
  MakeLists(files);
  Frame1 = new CaptionFrame("&Functions:", this);
  Put(*Frame1, "Frame1", {3564, 36, 3396, 2028});
  Option1 = std::make_unique<FunctionButtons>(Frame1);
  MakeOptions();
  cmdSeeResults = MakeButton(this, "cmdSeeResults", {72, 4896, 1236, 300}, "Last Res&ults",
                             "Display the results of the last search");
}

void OptionsPanel::MakeLists(Files& files) {
  QLabel* const Label1 = MakeLabel(this, "Label1", {72, 180, 1020, 264}, "Directory:");
  QLabel* const Label6 = MakeLabel(this, "Label6", {1836, 180, 660, 264}, "Drive:");
  QLabel* const Label5 = MakeLabel(this, "Label5", {504, 2304, 552, 264}, "Filter:");
  drvList = new DriveList(this);
  Put(*drvList, "drvList", {2520, 144, 924, 288});
  drvList->setToolTip("Select drive");
  Tie(*Label6, *drvList);
  dirList = new FolderList(files, this);
  Put(*dirList, "dirList", {72, 468, 3372, 1584});
  dirList->setToolTip("Search highlighted directory and its subdirectories");
  Tie(*Label1, *dirList);
  cboSearchSpec = new FilterBox(this);
  Put(*cboSearchSpec, "cboSearchSpec", {1044, 2268, 2400, 288});
  cboSearchSpec->setToolTip("Select filter for files to be displayed");
  Tie(*Label5, *cboSearchSpec);
  filList = new FileList(files, this);
  Put(*filList, "filList", {72, 2592, 3396, 1992});
  filList->setToolTip("Doubleclick file to show in browser. Single-click to select a file");
  filList->setAccessibleName("Files");
}

void OptionsPanel::MakeOptions() {
  Frame2 = new CaptionFrame("&Options:", this);
  Put(*Frame2, "Frame2", {3564, 2160, 3396, 2424});
  const auto check = [this](const char* name, int top, const char* caption, const char* tooltip) {
    return MakeCheckBox(Frame2, name, {72, top, 3252, 252}, caption, tooltip);
  };
  ShowEach = check("ShowEach", 180, "Confirm before replacing", "Show each finding in a dialog box.");
  ULcase =
      check("ULcase", 432, "UPPER/lower case dependent", "Tick for search in correct UPPER and lower case");
  CGI = check("CGI", 432, "Dont check links with \"CGI-bin\"",
              "Checkmark if the CGI-bin is not locally accessible");
  CGIlabel = MakeLabel(Frame2, "CGIlabel", {360, 720, 1332, 252}, "CGI-bin name:");
  CGIname = new QLineEdit("CGI-bin", Frame2);
  Put(*CGIname, "CGIname", {1692, 684, 1584, 288});
  CGIname->setToolTip("Name of the CGI-bin");
  Tie(*CGIlabel, *CGIname);
  SearchLabel = MakeLabel(Frame2, "SearchLabel", {72, 756, 3252, 216}, "Search for:");
  SearchTekst = new SearchTextBox("Insert search text here", Frame2);
  Put(*SearchTekst, "SearchTekst", {360, 972, 2928, 288});
  Tie(*SearchLabel, *SearchTekst);
  UCfilename = check("UCfilename", 972, "Permit UPPERcase in filenames",
                     "Tick for search in correct UPPER and lower case");
  RulesLabel = MakeLabel(Frame2, "RulesLabel", {72, 1296, 3252, 264}, "");
  RulesLabel->hide();
  ReplaceLabel = MakeLabel(Frame2, "ReplaceLabel", {72, 1296, 3252, 216}, "Replace by:");
  ReplaceText = new SearchTextBox("Insert replace text here", Frame2);
  Put(*ReplaceText, "ReplaceText", {360, 1512, 2928, 288});
  Tie(*ReplaceLabel, *ReplaceText);
  chkTags = check("chkTags", 1800, "Search with &&xxxx; tags",
                  "Convert the Search (and Replace) strings to include \"&xxxx;\" tags where appropriate");
  MarkedOnly = check("MarkedOnly", 2052, "Search the marked file, only",
                     "When ticked, single-click the file you want to search");
  for (QCheckBox* const ticked : {ShowEach, CGI, chkTags}) ticked->setChecked(true);
}

}  // namespace tessaril

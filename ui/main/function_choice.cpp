#include "ui/main/function_choice.h"

#include <initializer_list>

namespace tessaril {
namespace {

// A row of the table, by function. Texts that are null stay as they are.
struct Row {
  bool links;     // the options of the link check
  bool text;      // search text and how to search for it
  bool replace;   // replacement text
  bool ShowEach;  // and its caption
  const char* ShowEachCaption;
  bool MarkedOnly;
  const char* filListToolTip;
};

constexpr char kSee[] = "See each result";
constexpr char kConfirm[] = "Confirm before replacing";
constexpr char kDoubleClick[] = "Doubleclick file to show in browser";

constexpr Row kRows[] = {
    {true, false, false, true, kSee, true,
     "Doubleclick file to show in browser. Single-click to select a file."},
    {false, false, false, true, kConfirm, true, kDoubleClick},
    {false, false, false, false, nullptr, true, kDoubleClick},
    {false, true, false, true, kSee, true, kDoubleClick},
    {false, true, true, true, kConfirm, true, kDoubleClick},
    {false, false, false, false, nullptr, false, "Click file to be shown in browser"},
    {false, false, false, false, nullptr, true, kDoubleClick},
};

void Show(bool shown, std::initializer_list<QWidget*> controls) {
  for (QWidget* const control : controls) control->setVisible(shown);
}

}  // namespace

void ApplyFunction(Function function, OptionsPanel& panel) {
  const Row& row = kRows[static_cast<int>(function)];
  Show(row.links, {panel.CGI, panel.CGIlabel, panel.CGIname, panel.UCfilename});
  Show(row.text, {panel.chkTags, panel.SearchTekst, panel.ULcase});
  Show(row.replace, {panel.ReplaceText, panel.ReplaceLabel});
  Show(row.ShowEach, {panel.ShowEach});
  if (row.ShowEachCaption != nullptr) panel.ShowEach->setText(row.ShowEachCaption);
  panel.MarkedOnly->setVisible(row.MarkedOnly);
  panel.filList->setToolTip(row.filListToolTip);
}

void ShowLabelsOfTexts(OptionsPanel& panel) {
  panel.SearchLabel->setVisible(panel.SearchTekst->isVisibleTo(&panel));
  panel.ReplaceLabel->setVisible(panel.ReplaceText->isVisibleTo(&panel));
}

}  // namespace tessaril

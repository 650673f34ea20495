#include "ui/main/filter_box.h"

#include <QLineEdit>
#include <algorithm>

#include "engine/file_filter.h"
#include "ui/shared/texts.h"

namespace tessaril {
namespace {

struct Row {
  const char* filter;
  std::optional<Viewer> viewer;
};

constexpr Row kRows[] = {
    {"*.htm*;shtm*", {}},
    {"*.*", {}},
    {"*.gif;*.jpg;*.jpeg;*.png", Viewer::kBrowser},
    {"*.txt", Viewer::kEditor},
    {"*.pdf", Viewer::kBrowser},
    {"*.exe;*.zip", Viewer::kBrowser},
    {"*.hhc;*.hhk;*.hhp;*.h;*.dmp", Viewer::kEditor},
};

}  // namespace

FilterBox::FilterBox(QWidget* parent) : QComboBox(parent) {
  setEditable(true);
  setInsertPolicy(NoInsert);
  setCompleter(nullptr);
  setMaxVisibleItems(static_cast<int>(std::size(kRows)));
  for (const Row& row : kRows) addItem(row.filter);
  // The toolkit would take a typed text that is in the list for a choice from it.
  disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
  disconnect(lineEdit(), &QLineEdit::returnPressed, this, nullptr);
  connect(this, &QComboBox::activated, this, &FilterBox::Picked);
}

std::string FilterBox::Text() const {
  return Entered(currentText());
}

bool FilterBox::TakeFilterFor(const std::string& name) {
  const std::string before = Text();
  const auto* const row =
      std::ranges::find_if(kRows, [&name](const Row& r) { return FileFilter(r.filter).Lists(name); });
  if (row != std::end(kRows)) setCurrentIndex(static_cast<int>(row - kRows));
  return Text() != before;
}

std::optional<Viewer> FilterBox::ViewerFor(const std::string& filter) {
  for (const Row& row : kRows) {
    if (filter == row.filter) return row.viewer;
  }
  return std::nullopt;
}

}  // namespace tessaril

#ifndef TESSARIL_UI_MAIN_FILTER_BOX_H_
#define TESSARIL_UI_MAIN_FILTER_BOX_H_

#include <QComboBox>
#include <optional>
#include <string>

#include "ui/main/program.h"

namespace tessaril {

/// The filter box `cboSearchSpec`: file filters to pick from; any other may be typed.
class FilterBox : public QComboBox {
  Q_OBJECT

 public:
  explicit FilterBox(QWidget* parent);

  std::string Text() const;

  /// Takes the first entry that lists a file; that counts as typing, not as picking. Whether it is another.
  bool TakeFilterFor(const std::string& name);

  /// The viewer for files that the filter lists; nothing for a filter that does not decide that.
  static std::optional<Viewer> ViewerFor(const std::string& filter);

 signals:
  /// An entry of the list has been picked. Typing one picks nothing.
  void Picked();
};

}  // namespace tessaril

#endif  // TESSARIL_UI_MAIN_FILTER_BOX_H_

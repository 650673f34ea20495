#ifndef TESSARIL_UI_PRINTING_PRINT_DIALOG_H_
#define TESSARIL_UI_PRINTING_PRINT_DIALOG_H_

#include <QPrintDialog>

namespace tessaril {

/// The platform's print dialog, without what this program leaves aside: a text is always printed whole, in
/// its order, copy after copy. A file is looked at before it is chosen, and overwritten only when the user
/// says so.
class PrintDialog : public QPrintDialog {
 public:
  /// `printer` takes the user's choice.
  PrintDialog(QPrinter& printer, QWidget* window);

  void setVisible(bool visible) override;

 private:
  void Check();
  bool FileWillDo(const QString& path);
};

}  // namespace tessaril

#endif  // TESSARIL_UI_PRINTING_PRINT_DIALOG_H_

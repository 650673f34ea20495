#ifndef TESSARIL_TESTS_UI_SUPPORT_PRINT_STEPS_H_
#define TESSARIL_TESTS_UI_SUPPORT_PRINT_STEPS_H_

#include <QPrintDialog>
#include <QString>
#include <QStringList>

namespace tessaril {

/// Asks for so many copies and presses Print; looks whether the dialog offers what would print less, or in
/// another order.
void PressPrint(QPrintDialog& dialog, int copies);

/// What a program for PDF files says of one.
QString Ask(const QString& program, const QStringList& arguments);

}  // namespace tessaril

#endif  // TESSARIL_TESTS_UI_SUPPORT_PRINT_STEPS_H_

// Prints a text into a PDF file as the program does, dialog included, or with --toolkit as the toolkit prints
// a document by itself. Usage: print_run TEXT PDF [--toolkit]

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QTextDocument>
#include <QTimer>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "ui/printing/print_text.h"
#include "ui/printing/printer_font.h"
#include "ui/shared/texts.h"

namespace {

void PrintByToolkit(const std::string& text, const QString& pdf) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFileName(pdf);
  QTextDocument document;
  document.setDefaultFont(tessaril::PrinterFont("DejaVu Sans", 10));
  document.setPlainText(tessaril::ShownLines(text));
  document.print(&printer);
}

void PrintAsTheProgramDoes(const std::string& text, const QString& pdf) {
  QTimer::singleShot(0, [pdf] {
    auto* const dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
    dialog->findChild<QLineEdit*>("filename")->setText(pdf);
    dialog->accept();
  });
  QWidget window;
  window.resize(900, 640);
  window.show();
  tessaril::Session session;
  session.PrinterFontName = "DejaVu Sans";
  const tessaril::Status status = tessaril::PrintText(&window, session, text, "Tessaril Report");
  if (!status.ok()) std::cerr << status.reason() << "\n";
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  if (argc < 3) return 2;
  std::ifstream file(argv[1], std::ios::binary);
  const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  const QString pdf = QDir::current().absoluteFilePath(QString::fromLocal8Bit(argv[2]));
  argc > 3 ? PrintByToolkit(text, pdf) : PrintAsTheProgramDoes(text, pdf);
  return std::filesystem::exists(argv[2]) ? 0 : 1;
}

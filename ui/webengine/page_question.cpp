#include "ui/webengine/page_question.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessaril {
namespace {

constexpr qsizetype kMostShown = 1000;  // characters
constexpr qsizetype kMostLines = 20;
constexpr int kTextWidth = 400;  // pixels

// As much as fits on a small screen.
QString Beginning(const QString& text) {
  const QString lines = text.section('\n', 0, kMostLines - 1).left(kMostShown);
  return lines == text ? text : lines + " ...";
}

}  // namespace

PageQuestion::PageQuestion(QWidget* parent, const QString& origin, const QString& text, Kind kind,
                           bool can_stop)
    : QDialog(parent), answer_(new QLineEdit(this)) {
  setObjectName("frmPageQuestion");
  setWindowTitle("Page " + origin.left(kMostShown));
  auto* const label = new QLabel(this);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setMinimumWidth(kTextWidth);
  label->setText(Beginning(text));
  answer_->setVisible(kind == kAskText);
  auto* const buttons = new QDialogButtonBox(this);
  buttons->addButton(QDialogButtonBox::Ok);
  if (kind != kTell) buttons->addButton(QDialogButtonBox::Cancel);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  if (can_stop) {
    QPushButton* const stop = buttons->addButton("&Stop the page", QDialogButtonBox::ActionRole);
    connect(stop, &QPushButton::clicked, this, [this] {
      is_to_stop_ = true;
      reject();
    });
  }
  auto* const layout = new QVBoxLayout(this);
  for (QWidget* const part : {static_cast<QWidget*>(label), static_cast<QWidget*>(answer_)}) {
    layout->addWidget(part);
  }
  layout->addWidget(buttons);
}

void PageQuestion::SetAnswer(const QString& text) {
  answer_->setText(text);
  answer_->selectAll();
}

QString PageQuestion::Answer() const {
  return answer_->text();
}

}  // namespace tessaril

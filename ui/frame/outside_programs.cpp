#include "ui/frame/outside_programs.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QStandardPaths>
#include <memory>

namespace tessaril {
namespace {

constexpr qint64 kSoon = 5000;  // milliseconds; what ends later was not about the start

}  // namespace

bool StartProgram(const QString& program, const QStringList& arguments) {
  const QString file = QStandardPaths::findExecutable(program);
  return !file.isEmpty() && QProcess::startDetached(file, arguments);
}

bool StartProgram(const QString& program, const QStringList& arguments, const QObject* owner,
                  const std::function<void()>& on_failure) {
  const QString file = QStandardPaths::findExecutable(program);
  if (file.isEmpty()) return false;
  auto process = std::make_unique<QProcess>();
  process->setProcessChannelMode(QProcess::ForwardedChannels);
  process->setInputChannelMode(QProcess::ForwardedInputChannel);
  process->start(file, arguments);
  if (!process->waitForStarted()) return false;
  QProcess* const started = process.release();  // to destroy it while it runs would end it
  QObject::connect(started, &QProcess::finished, started, &QObject::deleteLater);
  QObject::connect(started, &QProcess::finished, owner,
                   [on_failure, soon = QDeadlineTimer(kSoon)](int status, QProcess::ExitStatus how) {
                     const bool failed = how != QProcess::NormalExit || status != 0;
                     if (failed && !soon.hasExpired()) on_failure();
                   });
  return true;
}

}  // namespace tessaril

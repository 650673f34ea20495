#ifndef TESSARIL_UI_MAIN_PROGRAM_H_
#define TESSARIL_UI_MAIN_PROGRAM_H_

#include <QSize>
#include <string>
#include <string_view>

#include "engine/status.h"

namespace tessaril {

/// Where "Show file" shows a file.
enum class Viewer { kBrowser, kEditor };

/// What the main window asks of the program around it.
class Program {
 public:
  virtual ~Program() = default;

  /// Writes the settings file. A failure is told, once a run of the program.
  virtual void SaveSettings() = 0;

  virtual Viewer FirstViewer() const = 0;

  /// Makes `viewer` the first one, in the menu and in the caption of "Show file". While the browser is known
  /// to be missing that changes nothing.
  virtual void SetFirstViewer(Viewer viewer) = 0;

  /// Shows a file in the browser window; false when there is no browser component.
  virtual bool ShowInBrowser(const std::string& path) = 0;

  /// From now on only the editor shows files; writes the settings.
  virtual void NoteMissingBrowser() = 0;

  /// Shows a file in the editor window; tells when it cannot be read.
  virtual void ShowInEditor(const std::string& path) = 0;

  /// Shows the editor window again, after it was left for the results.
  virtual void ReturnToEditor() = 0;

  /// Writes the page of external links where it is kept until the program ends, and gives its path.
  virtual Status WriteTemporaryPage(std::string_view page, std::string& path) = 0;

  /// Prints a text with a title above each page.
  virtual void Print(const std::string& text, const std::string& title) = 0;

  /// The size that the windows inside are laid out by, in pixels, menu bar included.
  virtual QSize FrameSize() const = 0;

  /// The main window fills the frame, or has the given inner size, in pixels, in its upper left corner.
  virtual void MaximizeMain() = 0;
  virtual void ShowMainNormal(QSize size) = 0;

  /// Leaves the program as soon as no search is on, without a question.
  virtual void Leave() = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_MAIN_PROGRAM_H_

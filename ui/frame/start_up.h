#ifndef TESSARIL_UI_FRAME_START_UP_H_
#define TESSARIL_UI_FRAME_START_UP_H_

#include <memory>
#include <string>
#include <vector>

#include "settings/settings_file.h"
#include "settings/temporary_page.h"
#include "ui/frame/frame_window.h"
#include "ui/shared/session.h"

namespace tessaril {

/// The running program, put together in the order that its parts need one another.
class StartUp {
 public:
  /// `program_folder` holds the entity data and, where it can be written, settings and temporary page; else
  /// these live in `user_folder`. Both without a separator at their end. `make_browser` gives the component
  /// for the browser window.
  StartUp(const std::string& program_folder, const std::string& user_folder, MakeBrowserControl make_browser);

  /// Reads settings and entity data and makes the windows, which are not shown yet. The main window opens
  /// what `arguments` name as soon as events are handled. False, when a message has told what is missing,
  /// ends the program; nothing is saved then.
  bool Run(const std::vector<std::string>& arguments = {});

  FrameWindow& Frame() { return frame_; }

 private:
  void EnterFirstFolder();

  Session session_;
  SettingsFile settings_file_;
  TemporaryPage page_;
  FrameWindow frame_;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_FRAME_START_UP_H_

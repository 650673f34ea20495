#ifndef TESSARIL_UI_SHARED_UNDOABLE_SAVE_H_
#define TESSARIL_UI_SHARED_UNDOABLE_SAVE_H_

#include <QWidget>
#include <string>
#include <string_view>

#include "engine/status.h"
#include "ui/shared/session.h"

namespace tessaril {

/// What the user is asked when the undo store cannot be written.
std::string NoUndoQuestion(const std::string& reason);

/// SaveFile, with the old content kept as that of a run. Where that is not possible the user is asked, over
/// `parent`, whether to save all the same.
Status SaveUndoably(Session& session, QWidget* parent, const std::string& path, std::string_view content);

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_UNDOABLE_SAVE_H_

#include "ui/shared/undoable_save.h"

#include "ui/shared/message_boxes.h"
#include "ui/shared/save_file.h"
#include "undo/undoable_files.h"

namespace tessaril {

std::string NoUndoQuestion(const std::string& reason) {
  return "What is changed now could not be undone:\r\n" + reason + "\r\nGo on without undo?";
}

Status SaveUndoably(Session& session, QWidget* parent, const std::string& path, std::string_view content) {
  UndoableFiles files(session.files, session.undo, "editor " + path, [parent](const std::string& reason) {
    return AskOkCancel(parent, NoUndoQuestion(reason));
  });
  return SaveFile(files, path, content);
}

}  // namespace tessaril

#ifndef TESSARIL_UI_EDITOR_EDITOR_FIND_H_
#define TESSARIL_UI_EDITOR_EDITOR_FIND_H_

#include <QObject>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "engine/entities.h"
#include "engine/phrase_search.h"
#include "ui/dialogs/find_dialog.h"
#include "ui/editor/edit_box.h"

namespace tessaril {

/// The editor's find. Positions count from 1, positions and lengths are bytes.
class EditorFind : public QObject {
  Q_OBJECT

 public:
  /// All that is given must live as long.
  EditorFind(EditBox& EditTekst, const Entities& entities);

  /// Asks what is to be found, and finds it from the beginning of the text on.
  void Find();

  /// Goes on behind the beginning of what is selected.
  void FindAgain();

 signals:
  /// A match is selected.
  void Found();

 private:
  FindDialog& frmFind();
  void FindInEditor();
  std::optional<PhraseSearch::Occurrence> Next(const std::string& sought);
  void TellNotFound();

  EditBox& EditTekst;
  const Entities& entities_;
  std::unique_ptr<FindDialog> frmFind_;  // made when it is first needed
  std::string FindText;                  // as it was typed at the last search
  std::size_t FindPosition = 0;          // of the last match; 0 makes the next search start at the beginning
  std::size_t FoundLength = 0;           // of the last match
  std::optional<Selection> shown_;  // the last match as the box selects it, which may be more of the text
};

}  // namespace tessaril

#endif  // TESSARIL_UI_EDITOR_EDITOR_FIND_H_

#ifndef TESSARIL_CLI_EXTERNAL_EDITOR_H_
#define TESSARIL_CLI_EXTERNAL_EDITOR_H_

#include <string>

#include "engine/page_encoding.h"
#include "engine/status.h"

namespace tessaril {

/// Lets the user edit a piece of a page in the editor that VISUAL or EDITOR names, else in "editor", and
/// waits for it. The piece is shown in UTF-8 and comes back in the page's encoding. A line end that the
/// editor adds behind the last line does not count. On failure, also when the editor reports one, `piece` is
/// unchanged.
Status EditPiece(std::string& piece, PageEncoding encoding);

}  // namespace tessaril

#endif  // TESSARIL_CLI_EXTERNAL_EDITOR_H_

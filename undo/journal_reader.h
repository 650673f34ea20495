#ifndef TESSARIL_UNDO_JOURNAL_READER_H_
#define TESSARIL_UNDO_JOURNAL_READER_H_

#include "engine/byte_buffer.h"
#include "undo/journal.h"

namespace tessaril {

/// Reads an open journal, but for the contents in it. What is incomplete or damaged ends it. Fails when the
/// file does not begin as a journal, or cannot be read.
Status ReadJournal(int file, Journal& journal);

/// Reads the old content of a page out of its journal. Fails when it is not the one that was written there.
Status ReadOldContent(int file, const JournalChange& change, ByteBuffer& content);

}  // namespace tessaril

#endif  // TESSARIL_UNDO_JOURNAL_READER_H_

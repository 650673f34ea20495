#ifndef TESSARIL_UI_BROWSER_ADDRESSES_H_
#define TESSARIL_UI_BROWSER_ADDRESSES_H_

#include <QString>
#include <QUrl>
#include <string>

namespace tessaril {

/// The address of a file with an absolute path, whatever its bytes are.
QUrl FileAddress(const std::string& path);

/// The path of the file that an address is of, or that it is itself: of a file address without "?", "#" and
/// what follows them, decoded whole; a path, absolute or in `folder`, as TypedAddress takes it. Any other
/// address gives a path at which there is no file, or an empty one.
std::string FileOfAddress(const QString& address, const std::string& folder);

/// What the user means by an address as typed: a path, absolute or in `folder`, that may have "#" and an
/// anchor behind it; a file address; or a web address, of which the beginning may be missing. A path stands
/// as it is when that file exists, else with blanks for each "%20". Empty when it is none.
QUrl TypedAddress(const QString& text, const std::string& folder);

}  // namespace tessaril

#endif  // TESSARIL_UI_BROWSER_ADDRESSES_H_

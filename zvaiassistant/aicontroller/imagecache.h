#pragma once

class QByteArray;
class QString;

namespace tavro::aiassistant::imagecache {

// The folder in which downloaded pictures are kept. Nothing in it is ever deleted by the module.

/// Path of the folder; it need not exist.
QString directory();

/// Makes the folder, with all its parents. False where that is not possible.
bool makeDirectory();

/// Saves @p bytes as they are in the folder, under the first free name, and returns the file's path. The file is there
/// whole or not at all: an empty path means that nothing was saved, which a warning
/// in the category "zvaiassistant.pictures" says with the reason.
QString save(const QByteArray &bytes);

} // namespace tavro::aiassistant::imagecache

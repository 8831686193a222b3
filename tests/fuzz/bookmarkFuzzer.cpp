// Arbitrary bytes as a bookmark. Only a complete bookmark with a valid path is accepted, and encodes to the
// same bytes.

#include "InodeBookmarks.h"
#include "require.h"

#include <climits>

using namespace kova;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (const auto record = decodeBookmark(bytes)) {
        require(record->path.startsWith('/') && record->path.size() < PATH_MAX &&
                bytes.endsWith(record->path));
        require(qstrlen(record->path.constData()) == static_cast<size_t>(record->path.size()));
        require(encodeBookmark(*record) == bytes);
    }
    return 0;
}

// libFuzzer target for the view document reader: any bytes either read as a
// document, which then writes and reads again, or fail with EQXError.
#include "repository/Errors.h"
#include "viewdoc/ViewDocument.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const TQXViewDocument document =
            viewdoc::Read(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
        viewdoc::Read(viewdoc::Write(document));
    } catch (const EQXError&) {
        // A refused file: what the reader is for.
    }
    return 0;
}

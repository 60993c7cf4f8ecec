#include "jpegsegments.h"

namespace kestrum {

namespace {
constexpr unsigned char kMarker = 0xFF;
constexpr unsigned char kStartOfImage = 0xD8;
constexpr unsigned char kEndOfImage = 0xD9;
constexpr unsigned char kStartOfScan = 0xDA;
constexpr unsigned char kFirstRestart = 0xD0;
constexpr unsigned char kLastRestart = 0xD7;
constexpr unsigned char kTemporary = 0x01;
constexpr qsizetype kSegmentHeaderBytes = 4; // marker and length
} // namespace

std::optional<JpegSegments> JpegSegments::of(QByteArrayView data)
{
    const auto byte = [&data](qsizetype at) { return static_cast<unsigned char>(data[at]); };
    if (data.size() < 2 || byte(0) != kMarker || byte(1) != kStartOfImage)
        return std::nullopt;
    qsizetype at = 2;
    while (at + kSegmentHeaderBytes <= data.size()) {
        if (byte(at) != kMarker)
            return std::nullopt;
        const unsigned char marker = byte(at + 1);
        if (marker == kMarker) { // fill byte
            ++at;
            continue;
        }
        if (marker == kTemporary || marker == kStartOfImage ||
            (marker >= kFirstRestart && marker <= kLastRestart)) {
            at += 2;
            continue;
        }
        if (marker == kEndOfImage)
            return std::nullopt;
        const qsizetype length = (qsizetype(byte(at + 2)) << 8) | byte(at + 3);
        if (length < 2)
            return std::nullopt;
        if (marker == kStartOfScan) {
            const qsizetype scanStart = std::min(at + 2 + length, data.size());
            // Searched from the end, where it sits unless something trails the image.
            const bool complete =
                data.sliced(scanStart).lastIndexOf(QByteArrayView("\xFF\xD9", 2)) >= 0;
            return JpegSegments{scanStart, complete};
        }
        at += 2 + length;
    }
    return std::nullopt;
}

} // namespace kestrum

#pragma once

#include <QByteArrayView>

#include <optional>

namespace kestrum {

/// Where the parts of a JPEG file lie, found by walking its marker segments: the metadata
/// and tables come first, then the compressed image data ("scans"), then an end marker.
struct JpegSegments {
    /// The offset just past the header of the first scan: everything before it is metadata
    /// and tables, all that a metadata reader needs.
    qsizetype scanStart = 0;
    /// Whether the end-of-image marker follows the scan data, so the file is not cut short.
    /// (Byte stuffing keeps that marker out of the scan data.)
    bool complete = false;

    /// The layout of `data`; nothing when it does not start as a JPEG or its segments are
    /// malformed before the first scan.
    static std::optional<JpegSegments> of(QByteArrayView data);
};

} // namespace kestrum

#include "cameracontrollerfootage.h"

#include <QBuffer>
#include <QFile>
#include <QtEndian>

namespace kestrum::bench {

namespace {

constexpr int kJpegQuality = 90;
constexpr quint32 kHasIndex = 0x10; // AVIF_HASINDEX
constexpr quint32 kKeyFrame = 0x10; // AVIIF_KEYFRAME
constexpr quint16 kBitsPerPixel = 24;

class Riff {
public:
    void u32(quint32 value)
    {
        char bytes[4];
        qToLittleEndian(value, bytes);
        m_data.append(bytes, 4);
    }
    void u16(quint16 value)
    {
        char bytes[2];
        qToLittleEndian(value, bytes);
        m_data.append(bytes, 2);
    }
    void fourcc(const char* code) { m_data.append(code, 4); }
    void bytes(const QByteArray& data) { m_data.append(data); }
    void chunk(const char* id, const QByteArray& data)
    {
        fourcc(id);
        u32(quint32(data.size()));
        bytes(data);
        if (data.size() % 2)
            m_data.append('\0');
    }
    void list(const char* type, const QByteArray& data)
    {
        fourcc("LIST");
        u32(quint32(data.size() + 4));
        fourcc(type);
        bytes(data);
    }
    qsizetype size() const { return m_data.size(); }
    const QByteArray& data() const { return m_data; }

private:
    QByteArray m_data;
};

} // namespace

bool writeMotionJpegAvi(const QString& path, const QList<QImage>& frames, int framesPerSecond)
{
    if (frames.isEmpty())
        return false;
    const quint32 width = quint32(frames.first().width());
    const quint32 height = quint32(frames.first().height());
    const quint32 count = quint32(frames.size());

    Riff movi;
    Riff index;
    movi.fourcc("movi");
    for (const QImage& frame : frames) {
        QByteArray jpeg;
        QBuffer buffer(&jpeg);
        buffer.open(QIODevice::WriteOnly);
        if (!frame.save(&buffer, "JPEG", kJpegQuality))
            return false;
        index.fourcc("00dc");
        index.u32(kKeyFrame);
        index.u32(quint32(movi.size())); // from the "movi" code
        index.u32(quint32(jpeg.size()));
        movi.chunk("00dc", jpeg);
    }

    Riff mainHeader;
    for (quint32 value : {quint32(1'000'000 / framesPerSecond), 0u, 0u, kHasIndex, count, 0u, 1u,
                          0u, width, height, 0u, 0u, 0u, 0u})
        mainHeader.u32(value);
    Riff streamHeader;
    streamHeader.fourcc("vids");
    streamHeader.fourcc("MJPG");
    for (quint32 value : {0u, 0u, 0u, 1u, quint32(framesPerSecond), 0u, count, 0u, 0xFFFFFFFFu, 0u})
        streamHeader.u32(value);
    for (quint16 value : {quint16(0), quint16(0), quint16(width), quint16(height)})
        streamHeader.u16(value);
    Riff format;
    format.u32(40);
    format.u32(width);
    format.u32(height);
    format.u16(1);
    format.u16(kBitsPerPixel);
    format.fourcc("MJPG");
    for (quint32 value : {width * height * 3, 0u, 0u, 0u, 0u})
        format.u32(value);

    Riff stream;
    stream.chunk("strh", streamHeader.data());
    stream.chunk("strf", format.data());
    Riff headers;
    headers.chunk("avih", mainHeader.data());
    headers.list("strl", stream.data());

    Riff body;
    body.fourcc("AVI ");
    body.list("hdrl", headers.data());
    body.fourcc("LIST");
    body.u32(quint32(movi.size()));
    body.bytes(movi.data());
    body.chunk("idx1", index.data());

    Riff file;
    file.chunk("RIFF", body.data());
    QFile out(path);
    return out.open(QIODevice::WriteOnly) && out.write(file.data()) == file.size();
}

} // namespace kestrum::bench

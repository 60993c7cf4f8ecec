#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace kestrum {

/// The controls of one V4L2 video node (/dev/videoN), read and written directly,
/// beside whatever streams from the node: Qt Multimedia neither reports nor sets a
/// webcam's exposure mode, exposure time and gain faithfully.
class V4l2Controls {
public:
    struct Range {
        qint32 minimum = 0;
        qint32 maximum = 0;
        qint32 defaultValue = 0;
    };

    /// Opens `nodePath` for reading and writing controls.
    explicit V4l2Controls(const QString& nodePath);
    ~V4l2Controls();
    V4l2Controls(const V4l2Controls&) = delete;
    V4l2Controls& operator=(const V4l2Controls&) = delete;

    bool isOpen() const { return m_fd >= 0; }
    /// Whether opening failed because the user may not use the node.
    bool isAccessDenied() const { return m_accessDenied; }
    /// Why the last failed call failed, in the system's words.
    QString errorText() const { return m_errorText; }

    /// The control's current value; nothing when the node lacks it or cannot be read.
    std::optional<qint32> value(quint32 controlId) const;
    bool setValue(quint32 controlId, qint32 value);
    std::optional<Range> range(quint32 controlId) const;
    /// The values a menu control accepts; empty when it is no menu or cannot be asked.
    QList<qint32> menuEntries(quint32 controlId) const;

private:
    int m_fd = -1;
    bool m_accessDenied = false;
    mutable QString m_errorText;
};

} // namespace kestrum

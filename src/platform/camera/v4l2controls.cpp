#include "v4l2controls.h"

#include <linux/videodev2.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace kestrum {

namespace {

QString systemError(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

// ioctl, repeated when a signal interrupted it.
int control(int fd, unsigned long request, void* argument)
{
    int result = 0;
    do {
        result = ::ioctl(fd, request, argument);
    } while (result < 0 && errno == EINTR);
    return result;
}

} // namespace

V4l2Controls::V4l2Controls(const QString& nodePath)
{
    m_fd = ::open(nodePath.toLocal8Bit().constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (m_fd < 0) {
        const int error = errno;
        m_accessDenied = error == EACCES || error == EPERM;
        m_errorText = nodePath + QStringLiteral(": ") + systemError(error);
    }
}

V4l2Controls::~V4l2Controls()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

std::optional<qint32> V4l2Controls::value(quint32 controlId) const
{
    if (m_fd < 0)
        return std::nullopt;
    v4l2_control request{};
    request.id = controlId;
    if (control(m_fd, VIDIOC_G_CTRL, &request) < 0) {
        m_errorText = systemError(errno);
        return std::nullopt;
    }
    return request.value;
}

bool V4l2Controls::setValue(quint32 controlId, qint32 value)
{
    if (m_fd < 0)
        return false;
    v4l2_control request{};
    request.id = controlId;
    request.value = value;
    if (control(m_fd, VIDIOC_S_CTRL, &request) < 0) {
        m_errorText = systemError(errno);
        return false;
    }
    return true;
}

std::optional<V4l2Controls::Range> V4l2Controls::range(quint32 controlId) const
{
    if (m_fd < 0)
        return std::nullopt;
    v4l2_queryctrl query{};
    query.id = controlId;
    if (control(m_fd, VIDIOC_QUERYCTRL, &query) < 0) {
        m_errorText = systemError(errno);
        return std::nullopt;
    }
    if (query.flags & V4L2_CTRL_FLAG_DISABLED)
        return std::nullopt;
    return Range{query.minimum, query.maximum, query.default_value};
}

QList<qint32> V4l2Controls::menuEntries(quint32 controlId) const
{
    const std::optional<Range> values = range(controlId);
    QList<qint32> entries;
    if (!values)
        return entries;
    for (qint32 index = values->minimum; index <= values->maximum && index >= 0; ++index) {
        v4l2_querymenu query{};
        query.id = controlId;
        query.index = quint32(index);
        // Cameras leave gaps in their menus: a missing entry fails alone.
        if (control(m_fd, VIDIOC_QUERYMENU, &query) == 0)
            entries.append(index);
        if (index == values->maximum)
            break;
    }
    return entries;
}

} // namespace kestrum

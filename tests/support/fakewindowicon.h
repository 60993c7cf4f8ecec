#pragma once

#include "platform/desktop/windowicon.h"

#include <QStringList>

namespace kestrum {

/// A window icon that keeps the picture paths it was given, in order.
class FakeWindowIcon final : public WindowIcon {
public:
    bool show(const QString& picturePath) override
    {
        m_shown.append(picturePath);
        return true;
    }

    const QStringList& shown() const { return m_shown; }

private:
    QStringList m_shown;
};

} // namespace kestrum

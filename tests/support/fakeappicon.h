#pragma once

#include "platform/desktop/appicon.h"

namespace kestrum {

/// The launcher's icon kept in memory; it refuses every change while not writable, as an
/// entry in a folder that cannot be written does.
class FakeAppIcon final : public AppIcon {
public:
    explicit FakeAppIcon(QString alternateName = {})
        : m_alternateName(std::move(alternateName))
    {}

    QString alternateIconName() const override { return m_alternateName; }
    bool setAlternateIconName(const QString& name) override
    {
        if (m_writable)
            m_alternateName = name;
        return m_writable;
    }

    void setWritable(bool writable) { m_writable = writable; }

private:
    QString m_alternateName;
    bool m_writable = true;
};

} // namespace kestrum

#pragma once

#include "platform/time/clock.h"

#include <QObject>

#include <cstdint>

namespace kestrum {

/// Whether the face outline is shown: from the first face seen until 0.5 s after the
/// last one, so that it stays up while faces keep arriving. The time runs on the injected
/// clock.
class FaceOutlineVisibility : public QObject {
    Q_OBJECT

public:
    static constexpr qint64 kHideAfterMs = 500;

    explicit FaceOutlineVisibility(Clock& clock, QObject* parent = nullptr);

    /// A face was analysed (and drawn).
    void faceSeen();

    bool visible() const { return m_visible; }

signals:
    void visibleChanged();

private:
    void setVisible(bool visible);

    Clock& m_clock;
    bool m_visible = false;
    /// Counts faces, so that only the timer of the last one hides the outline.
    std::uint64_t m_generation = 0;
};

} // namespace kestrum

#pragma once

#include "platform/desktop/mailcomposer.h"

namespace kestrum {

/// A mail composer with a fixed answer that counts how often it was asked and keeps the
/// mails it was handed.
class FakeMailComposer final : public MailComposer {
public:
    explicit FakeMailComposer(bool canSendMail)
        : m_canSendMail(canSendMail)
    {}

    QFuture<bool> canSendMail() const override
    {
        ++m_queryCount;
        return QtFuture::makeReadyFuture(m_canSendMail);
    }
    bool compose(const MailMessage& message) override
    {
        m_composed.append(message);
        return m_canSendMail;
    }

    int queryCount() const { return m_queryCount; }
    const QList<MailMessage>& composed() const { return m_composed; }

private:
    bool m_canSendMail;
    mutable int m_queryCount = 0;
    QList<MailMessage> m_composed;
};

} // namespace kestrum

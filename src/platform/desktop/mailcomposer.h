#pragma once

namespace kestrum {

/// The device's mail composer: whether this device can send mail at all, so that
/// the feedback mail is offered only where a mail program will take it.
class MailComposer {
public:
    virtual ~MailComposer() = default;

    /// Whether a mail program is set up to take a new message. May block briefly
    /// while the system is asked; callers ask once and keep the answer.
    virtual bool canSendMail() const = 0;
};

} // namespace kestrum

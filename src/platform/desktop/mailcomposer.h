#pragma once

#include "mailmessage.h"

#include <QFuture>

namespace kestrum {

/// The device's mail composer: whether a mail program is set up at all, so that the
/// feedback mail is offered only where one will take it, and handing it a message.
class MailComposer {
public:
    virtual ~MailComposer() = default;

    /// Finds out whether a mail program is set up to take a new message. Never blocks:
    /// the answer arrives in the future, on a worker where the system must be asked.
    virtual QFuture<bool> canSendMail() const = 0;
    /// Opens `message` in the mail program for the user to send; false when nothing
    /// took it.
    virtual bool compose(const MailMessage& message) = 0;
};

} // namespace kestrum

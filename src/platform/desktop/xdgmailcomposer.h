#pragma once

#include "mailcomposer.h"

namespace kestrum {

/// The mail composer of a freedesktop system: a mail program is whatever handles
/// mailto: links, as `xdg-mime query default x-scheme-handler/mailto` reports it.
/// Without xdg-mime (package xdg-utils) no mail can be sent.
class XdgMailComposer final : public MailComposer {
public:
    bool canSendMail() const override;
};

} // namespace kestrum

#pragma once

#include "mailcomposer.h"

namespace kestrum {

class DesktopServices;

/// The mail composer of a freedesktop system: a mail program is whatever handles
/// `mailto:` links, as `xdg-mime query default x-scheme-handler/mailto` reports it
/// (asked on a worker thread; without xdg-mime, package xdg-utils, no mail can be sent).
/// A message goes to it as a `mailto:` link.
class XdgMailComposer final : public MailComposer {
public:
    /// `links` opens the `mailto:` links and must outlive this object.
    explicit XdgMailComposer(DesktopServices& links);

    QFuture<bool> canSendMail() const override;
    bool compose(const MailMessage& message) override;

private:
    DesktopServices& m_links;
};

} // namespace kestrum

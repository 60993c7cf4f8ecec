#pragma once

#include <QString>
#include <QUrl>

namespace kestrum {

/// A mail for the user to finish and send in their own mail program.
struct MailMessage {
    QString recipient;
    QString subject;
    QString body; ///< lines separated by "\n"

    /// The `mailto:` link that opens this message in a mail program: subject and body
    /// percent-encoded, line breaks as CRLF, as mail programs expect them.
    QUrl toMailtoUrl() const;

    friend bool operator==(const MailMessage&, const MailMessage&) = default;
};

} // namespace kestrum

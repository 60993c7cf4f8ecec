#include "mailmessage.h"

namespace kestrum {

QUrl MailMessage::toMailtoUrl() const
{
    const auto encoded = [](const QString& text) {
        QString crlf = text;
        crlf.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        crlf.replace(u'\n', QStringLiteral("\r\n"));
        return crlf.toUtf8().toPercentEncoding();
    };
    QByteArray link = "mailto:" + recipient.toUtf8().toPercentEncoding("@");
    link += "?subject=" + encoded(subject);
    link += "&body=" + encoded(body);
    return QUrl::fromEncoded(link, QUrl::StrictMode);
}

} // namespace kestrum

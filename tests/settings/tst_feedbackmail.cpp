#include "settings/feedbackmail.h"

#include <QTest>

using namespace kestrum;

// The feedback mail and the mailto: link that carries it to the mail program.
class FeedbackMailTest : public QObject {
    Q_OBJECT

private slots:
    void bodyLeavesRoomAndEndsWithTheAppAndTheDevice_data()
    {
        QTest::addColumn<QStringList>("facts"); // name, version, build, hardware, system
        QTest::addColumn<QString>("body");
        const QString above = "\n\n-------\nPlease let me know what you think about the app above "
                              "this line.\nIf you need help, please describe the issue as detailed "
                              "as possible and attach screenshots if possible.\n\n";
        QTest::newRow("all known") << QStringList{"Kestrum", "2.0", "15", "aarch64", "Debian 12"}
                                   << above + "Kestrum 2.0 (15)\naarch64\nDebian 12";
        QTest::newRow("missing entries") << QStringList{"Kestrum", "", "", "", "Debian 12"}
                                         << above + "Kestrum  ()\n\nDebian 12";
    }

    void bodyLeavesRoomAndEndsWithTheAppAndTheDevice()
    {
        QFETCH(QStringList, facts);
        const MailMessage mail =
            FeedbackMail::make(facts[0], facts[1], facts[2], facts[3], facts[4]);
        QCOMPARE(mail.recipient, "feedback@kestrum.org");
        QCOMPARE(mail.subject, "Feedback Kestrum");
        QTEST(mail.body, "body");
    }

    void mailtoLinkEncodesSubjectAndBody_data()
    {
        QTest::addColumn<MailMessage>("message");
        QTest::addColumn<QByteArray>("link");
        QTest::newRow("spaces and line breaks")
            << MailMessage{"feedback@kestrum.org", "Feedback Kestrum", "Hi\nthere"}
            << QByteArray("mailto:feedback@kestrum.org?subject=Feedback%20Kestrum"
                          "&body=Hi%0D%0Athere");
        QTest::newRow("query characters and non-ASCII")
            << MailMessage{"a@b.org", "x&y=z?", "5 € # 100%"}
            << QByteArray("mailto:a@b.org?subject=x%26y%3Dz%3F&body=5%20%E2%82%AC%20%23%20100%25");
    }

    void mailtoLinkEncodesSubjectAndBody()
    {
        QFETCH(MailMessage, message);
        QFETCH(QByteArray, link);
        QCOMPARE(message.toMailtoUrl().toEncoded(), link);
    }
};

QTEST_GUILESS_MAIN(FeedbackMailTest)
#include "tst_feedbackmail.moc"

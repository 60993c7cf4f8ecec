#include "settings/feedbackmail.h"

#include <QTest>

using namespace kestrum;

// The feedback mail and the mailto: link that carries it to the mail program.
class FeedbackMailTest : public QObject {
    Q_OBJECT

private slots:
    void bodyEndsWithTheAppAndTheDevice_data()
    {
        QTest::addColumn<QStringList>("facts"); // name, version, build, hardware, system
        QTest::addColumn<QString>("ending");
        QTest::newRow("all known") << QStringList{"Kestrum", "2.0", "15", "aarch64", "Debian 12"}
                                   << "\n\nKestrum 2.0 (15)\naarch64\nDebian 12";
        QTest::newRow("missing entries")
            << QStringList{"Kestrum", "", "", "", "Debian 12"} << "\n\nKestrum  ()\n\nDebian 12";
    }

    void bodyEndsWithTheAppAndTheDevice()
    {
        QFETCH(QStringList, facts);
        QFETCH(QString, ending);
        const MailMessage mail =
            FeedbackMail::make(facts[0], facts[1], facts[2], facts[3], facts[4]);
        QCOMPARE(mail.subject, "Feedback Kestrum");
        QVERIFY(mail.body.startsWith("\n\n-------\nPlease let me know what you think about the "
                                     "app above this line.\nIf you need help,"));
        QVERIFY2(mail.body.endsWith(ending), qPrintable(mail.body));
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

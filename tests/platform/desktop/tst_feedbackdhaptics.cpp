#include "platform/desktop/feedbackdhaptics.h"

#include <QDBusConnectionInterface>
#include <QSignalSpy>
#include <QTest>

using namespace kestrum;

namespace {

// Stands in for feedbackd on the private session bus: records each TriggerFeedback.
class FakeFeedbackd : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.sigxcpu.Feedback")

public slots:
    Q_SCRIPTABLE uint TriggerFeedback(const QString& appId, const QString& event,
                                      const QVariantMap& hints, int timeout)
    {
        emit triggered(
            QStringList{appId, event, QString::number(hints.size()), QString::number(timeout)});
        return 1;
    }

signals:
    void triggered(const QStringList& call);
};

} // namespace

// Haptics as feedbackd events over the session bus (the test runs under dbus-run-session).
class FeedbackdHapticsTest : public QObject {
    Q_OBJECT

    FakeFeedbackd m_daemon;
    QDBusConnection m_daemonBus =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, "feedbackd");

private slots:
    void initTestCase()
    {
        QVERIFY2(m_daemonBus.isConnected(), "run under dbus-run-session");
        QVERIFY(m_daemonBus.registerObject("/org/sigxcpu/Feedback", &m_daemon,
                                           QDBusConnection::ExportScriptableSlots));
        QVERIFY(m_daemonBus.registerService("org.sigxcpu.Feedback"));
    }

    void playsTheNearestEvent_data()
    {
        QTest::addColumn<Haptics::Feedback>("feedback");
        QTest::addColumn<QString>("event");
        QTest::newRow("selection") << Haptics::Feedback::selection << "button-pressed";
        QTest::newRow("success") << Haptics::Feedback::success << "camera-shutter";
        QTest::newRow("error") << Haptics::Feedback::error << "phone-failure";
    }

    void playsTheNearestEvent()
    {
        QFETCH(Haptics::Feedback, feedback);
        QFETCH(QString, event);
        QSignalSpy triggered(&m_daemon, &FakeFeedbackd::triggered);
        FeedbackdHaptics(QDBusConnection::sessionBus(), "org.kestrum.Kestrum").play(feedback);
        QVERIFY(triggered.wait());
        // From the app, the event, no hints, for as long as the theme says.
        QCOMPARE(triggered.first().first().toStringList(),
                 (QStringList{"org.kestrum.Kestrum", event, "0", "-1"}));
    }
};

QTEST_GUILESS_MAIN(FeedbackdHapticsTest)
#include "tst_feedbackdhaptics.moc"

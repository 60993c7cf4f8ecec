#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// Starts the app off screen and looks at its first window: the QML loads without a
// binding error and shows the meter's reading.
class AppWindowTest : public QObject {
    Q_OBJECT

private slots:
    void startsAndDrawsTheMeter()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString picture = dir.filePath("window.png");
        QProcess app;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("KESTRUM_SETTINGS", dir.filePath("settings.ini"));
        environment.insert("KESTRUM_PICTURES", dir.filePath("Pictures"));
        environment.insert("SIMULATOR_MODEL_IDENTIFIER", "iPhone14,3");
        environment.insert("XDG_RUNTIME_DIR", dir.path());
        environment.insert("XDG_DATA_HOME", dir.filePath("data"));
        environment.insert("XDG_CACHE_HOME", dir.filePath("cache"));
        app.setProcessEnvironment(environment);
        app.start(QStringLiteral(KESTRUM_APP), {"--screenshot", picture});
        QVERIFY(app.waitForFinished(60000));
        const QByteArray errors = app.readAllStandardError();
        QCOMPARE(app.exitCode(), 0);
        for (const char* problem :
             {"ReferenceError", "TypeError", "Unable to assign", "is not a type"})
            QVERIFY2(!errors.contains(problem), errors.constData());
        const QImage window(picture);
        QVERIFY(!window.isNull());
        QVERIFY(window.height() > window.width()); // a portrait phone layout
    }
};

QTEST_GUILESS_MAIN(AppWindowTest)
#include "tst_appwindow.moc"

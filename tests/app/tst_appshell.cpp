#include "album/locationmanager.h"
#include "album/photoalbummock.h"
#include "app/adapterfactory.h"
#include "app/appenvironment.h"
#include "app/appshell.h"
#include "app/dependencycontainer.h"
#include "app/reviewrequest.h"
#include "camera/anycameracontroller.h"
#include "exposure/calculationcontroller.h"
#include "platform/camera/faceanalyser.h"
#include "platform/desktop/desktopservices.h"
#include "platform/desktop/haptics.h"
#include "platform/desktop/userdesktopentry.h"
#include "platform/map/tilesource.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "settings/settings.h"
#include "support/fakecapturedevice.h"
#include "support/fakemailcomposer.h"
#include "support/fakephotolibrary.h"
#include "support/fakepositionsource.h"
#include "support/fakereversegeocoder.h"
#include "support/fakewindowicon.h"
#include "support/manualclock.h"
#include "support/memorypreferencestore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrum;

namespace {

struct NoHaptics final : Haptics {
    void play(Feedback) override {}
};

struct RecordedLinks final : DesktopServices {
    bool openUrl(const QUrl& url) override
    {
        opened.append(url);
        return true;
    }
    bool openCameraSettings() override { return false; }
    bool openLocationSettings() override { return false; }
    QList<QUrl> opened;
};

// Keeps a pointer to what is made and handed over.
template <typename T> std::unique_ptr<T> kept(T*& pointer, std::unique_ptr<T> made)
{
    pointer = made.get();
    return made;
}

// Fakes of every adapter. Each service-bearing request is recorded, so the list shows
// the order in which the start-up builds its services.
class FakeAdapters final : public AdapterFactory {
public:
    std::unique_ptr<PreferenceStore> preferenceStore() override
    {
        made.append("settings");
        auto store = std::make_unique<MemoryPreferenceStore>();
        for (auto value = stored.cbegin(); value != stored.cend(); ++value)
            store->storeRaw(value.key(), value.value());
        return store;
    }
    std::unique_ptr<Clock> clock() override // the container's is made after the shell's
    {
        return kept(clockMade, std::make_unique<ManualClock>());
    }
    std::unique_ptr<ImageMetadata> imageMetadata() override
    {
        return std::make_unique<Exiv2ImageMetadata>();
    }
    std::unique_ptr<DesktopServices> desktopServices() override
    {
        return kept(links, std::make_unique<RecordedLinks>());
    }
    std::unique_ptr<MailComposer> mailComposer(DesktopServices&) override
    {
        return std::make_unique<FakeMailComposer>(false);
    }
    std::unique_ptr<Haptics> haptics() override { return std::make_unique<NoHaptics>(); }
    std::unique_ptr<UserDesktopEntry> userDesktopEntry() override
    {
        return std::make_unique<UserDesktopEntry>("/usr/bin/kestrum");
    }
    std::unique_ptr<WindowIcon> windowIcon() override
    {
        return kept(window, std::make_unique<FakeWindowIcon>());
    }
    std::unique_ptr<PositionSource> positionSource() override
    {
        made.append("location");
        return kept(positionSources.emplace_back(), std::make_unique<FakePositionSource>());
    }
    std::unique_ptr<ReverseGeocoder> reverseGeocoder(Clock&) override
    {
        return std::make_unique<FakeReverseGeocoder>();
    }
    std::unique_ptr<TileSource> tileSource() override { return nullptr; }
    std::unique_ptr<CaptureDevice> captureDevice() override
    {
        made.append("camera");
        return kept(device, std::make_unique<FakeCaptureDevice>());
    }
    std::unique_ptr<PhotoLibrary> photoLibrary(const ImageMetadata&) override
    {
        made.append("album");
        return std::make_unique<FakePhotoLibrary>();
    }
    std::shared_ptr<FaceAnalyser> faceAnalyser() override
    {
        made.append("faces");
        throw FaceAnalyserException(FaceAnalyserError::modelMissing, "no model in tests");
    }

    QVariantMap stored; // what the preference store holds at start
    QStringList made;
    ManualClock* clockMade = nullptr;
    RecordedLinks* links = nullptr;
    FakeWindowIcon* window = nullptr;
    QList<FakePositionSource*> positionSources; // the shell's first, then the container's
    FakeCaptureDevice* device = nullptr;
};

const QVariantList kThreeProfiles{QVariantMap{{"default", "Default"}}, QVariantMap{{"A1", "Film"}},
                                  QVariantMap{{"B2", "Night"}}};

QuickAction profileAction(const QString& id)
{
    return {"profile", QString(), {{"profileID", id}}};
}

StartupOptions onMockData(const QStringList& arguments = {})
{
    StartupOptions options;
    options.launchArguments = arguments;
    options.simulatedModel = "Linux";
    return options;
}

CameraFrame greyFrame()
{
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(qRgb(90, 120, 150));
    return {image, std::chrono::microseconds(1000)};
}

} // namespace

// The start-up sequence, quick actions, the hand-over and the review request, on fakes of
// every adapter (the user's desktop entry goes to a temporary XDG_DATA_HOME).
class AppShellTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    FakeAdapters m_adapters;
    std::unique_ptr<AppShell> m_shell;
    DependencyContainer& m_container = DependencyContainer::shared();

    Settings& settings() { return m_container.settings(); }
    QString entryPath() const
    {
        return m_dir.filePath("data/applications/org.kestrum.Kestrum.desktop");
    }
    // One cold start; `window` runs where the window is shown.
    void start(StartupOptions options, const std::function<void()>& window = {})
    {
        m_shell = std::make_unique<AppShell>(m_adapters, m_container);
        m_shell->start(options, [&window]() -> QQuickWindow* {
            if (window)
                window();
            return nullptr;
        });
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        qputenv("XDG_DATA_HOME", m_dir.filePath("data").toLocal8Bit());
        qputenv("TMPDIR", m_dir.path().toLocal8Bit()); // the logged photo's capture file
    }

    void cleanup()
    {
        m_shell.reset();
        m_container.clear();
        m_adapters = FakeAdapters();
    }

    void fillsTheContainerInOrder_data()
    {
        QTest::addColumn<std::optional<QString>>("simulatedModel");
        QTest::addColumn<QStringList>("made");
        QTest::addColumn<QStringList>("zoomTitles");
        QTest::newRow("live") << std::optional<QString>() // the shell's location first
                              << QStringList{"location", "settings", "location",
                                             "camera",   "album",    "faces"}
                              << QStringList{"1"};
        QTest::newRow("mock") << std::optional<QString>("iPhone14,3")
                              << QStringList{"location", "settings", "location", "album", "faces"}
                              << QStringList{"0.5", "1", "3"};
    }

    void fillsTheContainerInOrder()
    {
        QFETCH(std::optional<QString>, simulatedModel);
        QFETCH(QStringList, made);
        QFETCH(QStringList, zoomTitles);
        m_adapters.stored = {{"profiles", kThreeProfiles}};
        StartupOptions options;
        options.simulatedModel = simulatedModel;
        start(options);
        QCOMPARE(m_adapters.made, made);
        m_container.cameraController().setUp(); // as the main screen does when first shown
        QTRY_COMPARE(m_container.cameraController().zoomOptions().size(), zoomTitles.size());
        QStringList titles;
        for (const ZoomOption& option : m_container.cameraController().zoomOptions())
            titles.append(option.title);
        QCOMPARE(titles, zoomTitles);
        QCOMPARE(qobject_cast<PhotoAlbumMock*>(&m_container.photoAlbum()) != nullptr,
                 simulatedModel.has_value());
        // The meter follows the current profile.
        QVERIFY(settings().switchProfile("A1"));
        QCOMPARE(m_container.calculationController().settings(),
                 settings().currentProfileSettings());
    }

    void loggedPhotoTakesThePositionFromTheStartUpsOwnLocationManager_data()
    {
        QTest::addColumn<bool>("shellAlive");
        QTest::newRow("while the shell exists") << true;
        QTest::newRow("after it is gone") << false;
    }

    void loggedPhotoTakesThePositionFromTheStartUpsOwnLocationManager()
    {
        QFETCH(bool, shellAlive);
        start({});
        FakePositionSource* shellSource = m_adapters.positionSources.first();
        FakePositionSource* containerSource = m_adapters.positionSources.last();
        AnyCameraController& camera = m_container.cameraController();
        camera.setUp(); // as the main screen does when first shown
        QTRY_VERIFY(camera.sessionIsRunning());
        if (!shellAlive)
            m_shell.reset();
        QSignalSpy reloaded(&m_container.photoAlbum(), &PhotoAlbum::loggedExposuresChanged);
        QFuture<void> logged = camera.logExposure();
        QCoreApplication::processEvents(); // the permission check answers
        m_adapters.device->pushFrame(greyFrame());
        if (shellAlive) {
            QTRY_COMPARE(shellSource->locationRequests(), 1);
            shellSource->deliver({Location{-33.86, 151.21, 5.0}});
        }
        QTRY_VERIFY(logged.isFinished());
        logged.waitForFinished(); // rethrows a failure
        QVERIFY(reloaded.count() > 0 || reloaded.wait());
        QCOMPARE(containerSource->locationRequests(), 0);
        const QList<LoggedExposure> exposures = m_container.photoAlbum().loggedExposures();
        QCOMPARE(exposures.size(), 1);
        const CalculationController& meter = m_container.calculationController();
        QCOMPARE(exposures[0].iso(), meter.iso().display);
        QCOMPARE(exposures[0].aperture(), meter.aperture().display);
        QCOMPARE(exposures[0].coordinate().has_value(), shellAlive);
        if (shellAlive)
            QCOMPARE(exposures[0].coordinate()->latitude, -33.86);
    }

    // What an action does once read is quickActionWhileRunning's.
    void quickActionAtStartShowsItsProfileFromTheFirstFrame_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("profileAtWindow");
        QTest::newRow("a listed profile")
            << QStringList{"kestrum", "--quick-action=profile", "--quick-action-info=profileID=B2"}
            << "B2";
        QTest::newRow("no profile id") << QStringList{"kestrum", "--quick-action=profile"} << "A1";
        QTest::newRow("from the launcher") << QStringList{"kestrum"} << "A1";
    }

    void quickActionAtStartShowsItsProfileFromTheFirstFrame()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, profileAtWindow);
        m_adapters.stored = {{"profiles", kThreeProfiles}, {"currentProfileID", "A1"}};
        QString shown;
        start(StartupOptions::fromEnvironment(arguments),
              [&] { shown = m_container.calculationController().settings()->prefix(); });
        QCOMPARE(shown, profileAtWindow + ".");
    }

    // Which starts ask is tst_settings' rule; here the count, the delay and the arguments.
    void countsColdStartsAndAsksForReviewThreeSecondsAfterTheWindow_data()
    {
        QTest::addColumn<int>("startsBefore");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("asks");
        QTest::newRow("third start") << 2 << QStringList() << true;
        QTest::newRow("fourth start") << 3 << QStringList() << false;
        QTest::newRow("screenshots") << 2 << QStringList{"SCREENSHOTS_MODE"} << false;
    }

    void countsColdStartsAndAsksForReviewThreeSecondsAfterTheWindow()
    {
        QFETCH(int, startsBefore);
        QFETCH(QStringList, arguments);
        QFETCH(bool, asks);
        m_adapters.stored = {{"appStarts", startsBefore}};
        qint64 startsAtWindow = -1;
        start(onMockData(arguments), [&] { startsAtWindow = settings().appStarts(); });
        QCOMPARE(startsAtWindow, startsBefore);
        QCOMPARE(settings().appStarts(), startsBefore + 1);
        QSignalSpy requested(m_shell.get(), &AppShell::reviewRequested);

        m_adapters.clockMade->advance(2999);
        QCOMPARE(requested.count(), 0);
        m_adapters.clockMade->advance(1);
        QCOMPARE(requested.count(), asks ? 1 : 0);
        QCOMPARE(settings().didPromptForReview(), asks);
        m_adapters.clockMade->advance(60'000);
        QCOMPARE(requested.count(), asks ? 1 : 0);
        // The dialog's answer "rate" opens the app's page in the software centre.
        m_shell->findChild<ReviewRequest*>()->rate();
        QCOMPARE(m_adapters.links->opened, QList<QUrl>{QUrl("appstream:org.kestrum.Kestrum")});

        // Leaving the app and coming back is no start.
        emit qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
        emit qGuiApp->applicationStateChanged(Qt::ApplicationActive);
        QCOMPARE(settings().appStarts(), startsBefore + 1);
    }

    void quickActionsFollowTheProfilesWhenTheAppLeavesTheForeground()
    {
        m_adapters.stored = {{"profiles", kThreeProfiles}};
        start(onMockData());
        QFile::remove(entryPath());
        emit qGuiApp->applicationStateChanged(Qt::ApplicationActive);
        QVERIFY(!QFile::exists(entryPath()));

        QVERIFY(settings().renameProfile("B2", "Night & Day"));
        emit qGuiApp->applicationStateChanged(Qt::ApplicationSuspended);
        QFile entry(entryPath()); // its layout is tst_userdesktopentry's
        QVERIFY(entry.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(entry.readAll());
        QVERIFY2(text.contains("\nActions=profile-default;profile-A1;profile-B2;\n") &&
                     text.contains("[Desktop Action profile-B2]\nName=Night & Day\n"),
                 qPrintable(text));
    }

    void windowCarriesTheLaunchersIconWhenShown_data()
    {
        QTest::addColumn<QString>("iconLine"); // in the user's entry before the start
        QTest::addColumn<QString>("picture");
        QTest::newRow("an alternate") << "Icon=org.kestrum.Kestrum-Classic"
                                      << ":/kestrum/icons/Classic.svg";
        QTest::newRow("one not on offer") << "Icon=org.kestrum.Kestrum-Sepia"
                                          << ":/kestrum/icons/Light.svg";
    }

    void windowCarriesTheLaunchersIconWhenShown()
    {
        QFETCH(QString, iconLine);
        QFETCH(QString, picture);
        QVERIFY(QDir().mkpath(QFileInfo(entryPath()).path()));
        QFile entry(entryPath());
        QVERIFY(entry.open(QIODevice::WriteOnly));
        entry.write(("[Desktop Entry]\n" + iconLine + "\n").toUtf8());
        entry.close();
        QStringList shownWithTheWindow;
        start(onMockData(), [&] { shownWithTheWindow = m_adapters.window->shown(); });
        QCOMPARE(shownWithTheWindow, QStringList{picture});
    }

    void quickActionWhileRunning_data()
    {
        QTest::addColumn<QuickAction>("action");
        QTest::addColumn<bool>("handled");
        QTest::addColumn<QString>("current");
        QTest::newRow("a listed profile") << profileAction("B2") << true << "B2";
        QTest::newRow("a profile deleted since") << profileAction("A1") << false << "default";
        QTest::newRow("another type")
            << QuickAction{"camera", {}, {{"profileID", "B2"}}} << false << "default";
        QTest::newRow("an id that is no text")
            << QuickAction{"profile", {}, {{"profileID", 2}}} << false << "default";
    }

    void quickActionWhileRunning()
    {
        QFETCH(QuickAction, action);
        QFETCH(bool, handled);
        QFETCH(QString, current);
        m_adapters.stored = {{"profiles", kThreeProfiles}};
        start(onMockData());
        QVERIFY(m_shell->publishQuickActions());
        settings().deleteProfiles({1}); // A1, after its action was written
        QTRY_COMPARE(settings().profiles().size(), 2);
        QCOMPARE(m_shell->performQuickAction(action), handled);
        QCOMPARE(settings().currentProfileID(), current);
    }

    void handOverClosesWhatIsPresentedThenSwitches()
    {
        m_adapters.stored = {{"profiles", kThreeProfiles}};
        start(onMockData());
        QStringList seen;
        connect(&m_container.environment(), &AppEnvironment::dismissPresentedViewsRequested, this,
                [&] { seen.append("dismissed in " + settings().currentProfileID()); });
        m_shell->takeHandOver(
            {"kestrum", "--quick-action=profile", "--quick-action-info=profileID=A1"});
        seen.append("then " + settings().currentProfileID());
        m_shell->takeHandOver({"kestrum"});
        QCOMPARE(seen, (QStringList{"dismissed in default", "then A1"}));
    }
};

QTEST_MAIN(AppShellTest)
#include "tst_appshell.moc"

// Runs the Quick Tests in tests/app/qml against the app's QML module, whose singletons are
// made over fakes: settings in memory, the mock camera, an album on a library in memory,
// a scripted geocoder, the launcher's and the window's icons and the mail program in
// memory, and a clock that moves only when a test says so (`Harness`).

#include "album/locationmanager.h"
#include "album/photoalbum.h"
#include "app/appenvironment.h"
#include "app/facedetectorfacade.h"
#include "app/qmlservices.h"
#include "camera/anycameracontroller.h"
#include "camera/mockcameracontroller.h"
#include "exposure/calculationcontroller.h"
#include "platform/desktop/desktopservices.h"
#include "platform/desktop/haptics.h"
#include "platform/photos/exiv2imagemetadata.h"
#include "settings/settings.h"
#include "settings/translationcatalogue.h"
#include "support/fakeappicon.h"
#include "support/fakemailcomposer.h"
#include "support/fakephotolibrary.h"
#include "support/fakepositionsource.h"
#include "support/fakereversegeocoder.h"
#include "support/fakewindowicon.h"
#include "support/manualclock.h"
#include "support/memorypreferencestore.h"
#include "support/testphotos.h"

#include <QAccessible>
#include <QDir>
#include <QQmlEngine>
#include <QtQml/qqmlextensionplugin.h>
#include <QtQuickTest>

Q_IMPORT_QML_PLUGIN(KestrumPlugin)

using namespace kestrum;

namespace {

/// What the tests drive directly, what the app did to the devices, and what a screen reader
/// reads.
class Harness : public QObject {
    Q_OBJECT
    /// Every point the camera was asked to meter at, in order.
    Q_PROPERTY(QList<QPointF> exposedPoints MEMBER exposedPoints)
    /// Whether each of those was a tap (the camera returns to the scene when it changes).
    Q_PROPERTY(QList<bool> exposedMonitoring MEMBER exposedMonitoring)
    /// Every haptic played: "selection", "success" or "error".
    Q_PROPERTY(QStringList haptics MEMBER haptics)
    Q_PROPERTY(int cameraSettingsOpened MEMBER cameraSettingsOpened)
    /// Where pictures of screens are saved for people to look at.
    Q_PROPERTY(QString screenshotDir MEMBER screenshotDir CONSTANT)
    /// How often a pinch's zoom was made the camera's own.
    Q_PROPERTY(int zoomCommits MEMBER zoomCommits)

public:
    /// What the app wrote through the desktop's ports.
    struct Desktop {
        FakeAppIcon& launcherIcon;
        FakeWindowIcon& windowIcon;
        FakeMailComposer& mail;
    };

    Harness(ManualClock& clock, const Desktop& desktop)
        : m_clock(clock)
        , m_desktop(desktop)
    {}

    /// Moves the meter's clock on, running its 0.3 s measurements and throttles.
    Q_INVOKABLE void advance(int ms) { m_clock.advance(ms); }
    /// The profile names the preference store holds, in order.
    Q_INVOKABLE QStringList storedProfileNames() const
    {
        QStringList names;
        const QVariantList profiles =
            store->array(QStringLiteral("profiles")).value_or(QVariantList());
        for (const QVariant& profile : profiles) // each stored as {id: name}
            names.append(profile.toMap().isEmpty() ? QString()
                                                   : profile.toMap().first().toString());
        return names;
    }

    /// Deletes every logged photo, as the user could in the photo library.
    Q_INVOKABLE void emptyAlbum() const
    {
        if (onEmptyAlbum)
            onEmptyAlbum();
    }

    /// Forgets the exposures and haptics recorded so far.
    Q_INVOKABLE void clearRecords()
    {
        exposedPoints.clear();
        exposedMonitoring.clear();
        haptics.clear();
        zoomCommits = 0;
    }
    /// Reports a face with normalised box `box`, as the face detector does.
    Q_INVOKABLE void observeFace(QRectF box)
    {
        emit FaceDetectorFacade::create(nullptr, nullptr)->faceObserved(FaceObservation{box, 1.0f});
    }

    /// The alternate icon the launcher's entry names ("" for the app's own).
    Q_INVOKABLE QString launcherIcon() const { return m_desktop.launcherIcon.alternateIconName(); }
    /// The pictures the window was given, in order.
    Q_INVOKABLE QStringList windowIcons() const { return m_desktop.windowIcon.shown(); }
    /// The subjects of the mails handed to the mail program, in order.
    Q_INVOKABLE QStringList mailSubjects() const
    {
        QStringList subjects;
        for (const MailMessage& mail : m_desktop.mail.composed())
            subjects.append(mail.subject);
        return subjects;
    }

    /// What a screen reader learns of `item`: name, role, description, value with its
    /// bounds, and how many elements it has under it; empty when it is not an element.
    Q_INVOKABLE QVariantMap accessible(QObject* item) const
    {
        QAccessibleInterface* element = QAccessible::queryAccessibleInterface(item);
        if (!element)
            return {};
        QVariantMap map{{QStringLiteral("name"), element->text(QAccessible::Name)},
                        {QStringLiteral("description"), element->text(QAccessible::Description)},
                        {QStringLiteral("role"), int(element->role())},
                        {QStringLiteral("childCount"), element->childCount()}};
        if (QAccessibleValueInterface* value = element->valueInterface()) {
            map.insert(QStringLiteral("value"), value->currentValue());
            map.insert(QStringLiteral("minimumValue"), value->minimumValue());
            map.insert(QStringLiteral("maximumValue"), value->maximumValue());
        }
        return map;
    }

    /// The actions a screen reader is offered on `item`, in order.
    Q_INVOKABLE QStringList accessibleActions(QObject* item) const
    {
        QAccessibleInterface* element = QAccessible::queryAccessibleInterface(item);
        QAccessibleActionInterface* actions = element ? element->actionInterface() : nullptr;
        return actions ? actions->actionNames() : QStringList();
    }

    /// Performs a screen reader's action on `item`: "Increase", "Decrease", "Press"…; false
    /// when the element does not offer it.
    Q_INVOKABLE bool accessibleAction(QObject* item, const QString& action) const
    {
        QAccessibleInterface* element = QAccessible::queryAccessibleInterface(item);
        QAccessibleActionInterface* actions = element ? element->actionInterface() : nullptr;
        if (!actions || !actions->actionNames().contains(action))
            return false;
        actions->doAction(action);
        return true;
    }

    const PreferenceStore* store = nullptr;
    std::function<void()> onEmptyAlbum;
    QList<QPointF> exposedPoints;
    QList<bool> exposedMonitoring;
    QStringList haptics;
    int cameraSettingsOpened = 0;
    int zoomCommits = 0;
    QString screenshotDir = QStringLiteral(SCREENSHOT_DIR);

private:
    ManualClock& m_clock;
    Desktop m_desktop;
};

/// The mock camera, remembering where it was asked to meter.
class RecordingCamera final : public MockCameraController {
public:
    explicit RecordingCamera(Harness& harness)
        : MockCameraController(AuthorizationStatus::authorized, QStringLiteral("iPhone14,3"), false)
        , m_harness(harness)
    {}
    void expose(QPointF point, ExposureMode, bool monitorSubjectAreaChange) override
    {
        m_harness.exposedPoints.append(point);
        m_harness.exposedMonitoring.append(monitorSubjectAreaChange);
    }
    void commitInteractiveZoom() override
    {
        ++m_harness.zoomCommits;
        setInteractiveZoomFactor(1.0f);
    }

private:
    Harness& m_harness;
};

struct RecordingHaptics final : Haptics {
    explicit RecordingHaptics(Harness& harness)
        : harness(harness)
    {}
    void play(Feedback feedback) override
    {
        static const char* const names[] = {"selection", "success", "error"};
        harness.haptics.append(QString::fromLatin1(names[int(feedback)]));
    }
    Harness& harness;
};

struct RecordingDesktop final : DesktopServices {
    explicit RecordingDesktop(Harness& harness)
        : harness(harness)
    {}
    bool openUrl(const QUrl&) override { return false; }
    bool openCameraSettings() override
    {
        ++harness.cameraSettingsOpened;
        return true;
    }
    bool openLocationSettings() override { return false; }
    Harness& harness;
};

/// The services behind the singletons for one test file; the album holds one logged photo,
/// taken at the Sydney Opera House.
struct World {
    World()
    {
        const auto album = library.addAlbum(QString::fromLatin1(PhotoAlbum::kAlbumTitle));
        const auto properties =
            test::exposureMetadata("200", "2.8", "500", 0.33, Location{-33.8568, 151.2153, 4.0});
        library.addPhoto(album, test::loggedJpeg(metadata, properties),
                         QDateTime(QDate(2025, 6, 1), QTime(10, 15), Qt::UTC));
        photoAlbum = std::make_unique<PhotoAlbum>(library, metadata);
        geocoder->setOutcome(Placemark{QStringLiteral("Opera House"), QStringLiteral("Sydney")});
        QObject::connect(&settings, &Settings::currentProfileSettingsChanged, &meter,
                         [this] { meter.setSettings(settings.currentProfileSettings()); });
        harness.store = &store;
        harness.onEmptyAlbum = [this, album] {
            library.removePhotos(album);
            PhotoLibraryChange change;
            change.addAlbum(album.localIdentifier, {album});
            library.announce(change);
        };
        services = std::make_unique<QmlServices>(QmlServices::Sources{
            settings, store, meter, camera, nullptr, *photoAlbum, locationManager, haptics, desktop,
            mail, launcherIcon, windowIcon, clock, &environment});
    }

    MemoryPreferenceStore store;
    FakeMailComposer mail{true};
    FakeAppIcon launcherIcon;
    FakeWindowIcon windowIcon;
    ManualClock clock;
    Harness harness{clock, {launcherIcon, windowIcon, mail}};
    Settings settings{store, mail, {}};
    AnyCameraController camera{std::make_shared<RecordingCamera>(harness)};
    RecordingHaptics haptics{harness};
    RecordingDesktop desktop{harness};
    AppEnvironment environment;
    Calculator calculator{[this] { return settings.currentProfileSettings(); }};
    CalculationController meter{calculator, camera, settings.currentProfileSettings(), clock};
    Exiv2ImageMetadata metadata;
    FakePhotoLibrary library;
    std::unique_ptr<PhotoAlbum> photoAlbum;
    FakeReverseGeocoder* geocoder = new FakeReverseGeocoder;
    LocationManager locationManager{std::make_unique<FakePositionSource>(),
                                    std::unique_ptr<ReverseGeocoder>(geocoder)};
    std::unique_ptr<QmlServices> services;
};

World* s_world = nullptr; // the world of the engine running now

} // namespace

class Setup : public QObject {
    Q_OBJECT

public slots:
    void applicationAvailable()
    {
        installTranslationCatalogue(*QCoreApplication::instance());
        QDir().mkpath(QStringLiteral(SCREENSHOT_DIR));
        qmlRegisterSingletonType<Harness>(
            "KestrumTest", 1, 0, "Harness", [](QQmlEngine*, QJSEngine*) -> Harness* {
                QJSEngine::setObjectOwnership(&s_world->harness, QJSEngine::CppOwnership);
                return &s_world->harness;
            });
    }

    // Every test file gets its own engine, and a fresh world that outlives it.
    void qmlEngineAvailable(QQmlEngine* engine)
    {
        // The module's QML components live in its resources, under qrc:/Kestrum.
        engine->addImportPath(QStringLiteral("qrc:/"));
        m_world = std::make_unique<World>();
        s_world = m_world.get();
        connect(engine, &QObject::destroyed, this, [this, world = m_world.get()] {
            if (m_world.get() == world)
                m_world.reset();
        });
    }

    void cleanupTestCase() { m_world.reset(); }

private:
    std::unique_ptr<World> m_world;
};

QUICK_TEST_MAIN_WITH_SETUP(kestrum_qml, Setup)
#include "tst_qml.moc"

#include "appshell.h"

#include "album/locationmanager.h"
#include "app/adapterfactory.h"
#include "app/appenvironment.h"
#include "app/dependencycontainer.h"
#include "app/profilequickactions.h"
#include "app/reviewrequest.h"
#include "platform/desktop/appicon.h"
#include "platform/desktop/quickaction.h"
#include "platform/desktop/windowicon.h"
#include "platform/location/positionsource.h"
#include "platform/location/reversegeocoder.h"
#include "platform/time/clock.h"
#include "settings/appicons.h"
#include "settings/settings.h"

#include <QGuiApplication>
#include <QLoggingCategory>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

namespace kestrum {

namespace {
Q_LOGGING_CATEGORY(lcShell, "kestrum.shell")
const QUrl kReviewDialog(QStringLiteral("qrc:/Kestrum/ReviewDialog.qml"));
} // namespace

AppShell::AppShell(AdapterFactory& adapters, DependencyContainer& container, QObject* parent)
    : QObject(parent)
    , m_adapters(adapters)
    , m_container(container)
    , m_clock(adapters.clock())
    , m_locationManager(std::make_unique<LocationManager>(adapters.positionSource(),
                                                          adapters.reverseGeocoder(*m_clock)))
{}

AppShell::~AppShell() = default;

void AppShell::start(const StartupOptions& options,
                     const std::function<QQuickWindow*()>& showWindow)
{
    fillDependencies(m_container, options, m_adapters, m_locationManager.get());
    Settings& settings = m_container.settings();
    if (options.quickAction && !performQuickAction(*options.quickAction))
        qCInfo(lcShell, "the quick action that started the app names no listed profile");

    // The window carries the icon the launcher shows.
    m_container.windowIcon().show(
        AppIcons::picturePath(AppIcons::rowOf(m_container.appIcon().alternateIconName())));
    m_window = showWindow();

    settings.countAppStart();
    m_review =
        new ReviewRequest(settings, m_container.clock(), m_container.desktopServices(), this);
    connect(m_review, &ReviewRequest::requested, this, &AppShell::reviewRequested);
    connect(m_review, &ReviewRequest::requested, this, &AppShell::showReviewDialog);
    m_review->scheduleAfterWindowShown();

    if (qGuiApp) {
        connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
                [this](Qt::ApplicationState state) {
                    if (state != Qt::ApplicationActive)
                        publishQuickActions();
                });
    }
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
            &AppShell::publishQuickActions);
}

bool AppShell::performQuickAction(const QuickAction& action)
{
    return ProfileQuickActions::perform(m_container.settings(), action);
}

void AppShell::takeHandOver(const QStringList& arguments)
{
    if (m_window) {
        m_window->show();
        m_window->raise();
        m_window->requestActivate();
    }
    const std::optional<QuickAction> action = QuickAction::fromArguments(arguments);
    if (!action)
        return;
    m_container.environment().dismissPresentedViews([this, action = *action] {
        if (!performQuickAction(action))
            qCInfo(lcShell, "a quick action was not handled: type %s", qPrintable(action.type));
    });
}

bool AppShell::publishQuickActions()
{
    return m_container.quickActionShortcuts().setQuickActions(
        ProfileQuickActions::forProfiles(m_container.settings().profiles()));
}

void AppShell::showReviewDialog()
{
    QQmlEngine* engine = m_window ? qmlEngine(m_window) : nullptr;
    if (!engine)
        return;
    QQmlComponent component(engine, kReviewDialog);
    QObject* dialog = component.createWithInitialProperties(
        {{QStringLiteral("parent"), QVariant::fromValue<QObject*>(m_window->contentItem())}});
    if (!dialog) {
        qCWarning(lcShell, "the review dialog could not be made: %s",
                  qPrintable(component.errorString()));
        return;
    }
    dialog->setParent(m_window);
    connect(dialog, SIGNAL(rateChosen()), m_review, SLOT(rate()));
    connect(dialog, SIGNAL(closed()), dialog, SLOT(deleteLater()));
    QMetaObject::invokeMethod(dialog, "open");
}

} // namespace kestrum

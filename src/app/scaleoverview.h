#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

class QQmlEngine;
class QJSEngine;

namespace kestrum {

class ProfileSettings;

/// The current profile's scales as display texts, for the start screen: the
/// apertures and speeds within the profile's limits, the ISO speeds within its
/// limits and the compensation scale of its ISO step.
class ScaleOverview : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QStringList apertures READ apertures NOTIFY changed)
    Q_PROPERTY(QStringList speeds READ speeds NOTIFY changed)
    Q_PROPERTY(QStringList isos READ isos NOTIFY changed)
    Q_PROPERTY(QStringList compensations READ compensations NOTIFY changed)
    Q_PROPERTY(QString steps READ steps NOTIFY changed)
    Q_PROPERTY(QString mode READ mode NOTIFY changed)

public:
    explicit ScaleOverview(ProfileSettings& settings, QObject* parent = nullptr);
    static ScaleOverview* create(QQmlEngine* engine, QJSEngine* scriptEngine);

    QStringList apertures() const;
    QStringList speeds() const;
    QStringList isos() const;
    QStringList compensations() const;
    QString steps() const;
    QString mode() const;

signals:
    void changed();

private:
    ProfileSettings& m_settings;
};

} // namespace kestrum

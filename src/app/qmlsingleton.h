#pragma once

#include <QJSEngine>
#include <QtGlobal>

namespace kestrum {

/// What a facade's `create()` hands to an engine: the instance that the composition
/// root (or a test) offered, which stays C++'s to delete. Asking before anything was
/// offered is a wiring mistake; the engine then reports the singleton as missing.
template <typename T> T* offeredSingleton(T* instance, const char* qmlName)
{
    if (!instance) {
        qCritical("QML asked for the singleton %s before the app offered one", qmlName);
        return nullptr;
    }
    QJSEngine::setObjectOwnership(instance, QJSEngine::CppOwnership);
    return instance;
}

} // namespace kestrum

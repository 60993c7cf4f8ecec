#pragma once

#include <QLoggingCategory>

namespace kestrum {

/// Warnings of the settings and profiles: damaged stored values, operations dropped.
Q_DECLARE_LOGGING_CATEGORY(lcSettings)

} // namespace kestrum

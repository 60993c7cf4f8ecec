#include "settingslogging.h"

namespace kestrum {

Q_LOGGING_CATEGORY(lcSettings, "kestrum.settings")

} // namespace kestrum

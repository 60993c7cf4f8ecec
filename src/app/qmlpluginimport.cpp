// The Kestrum QML module is a static library; importing its plugin links its types into
// the program that lists this file.

#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(KestrumPlugin)

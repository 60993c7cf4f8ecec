#include "translationcatalogue.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>
#include <QtGlobal>

#include <memory>

namespace kestrum {

namespace {
// Where qt_add_translations puts the compiled catalogues: ":/i18n/kestrum_<lang>.qm".
constexpr auto kCatalogueDirectory = ":/i18n";
constexpr auto kCatalogueName = "kestrum";
constexpr auto kFallbackCatalogue = "kestrum_en";
} // namespace

bool installTranslationCatalogue(QCoreApplication& app)
{
    auto translator = std::make_unique<QTranslator>();
    const QString directory = QString::fromLatin1(kCatalogueDirectory);
    const bool loaded = translator->load(QLocale(), QString::fromLatin1(kCatalogueName),
                                         QStringLiteral("_"), directory) ||
                        translator->load(QString::fromLatin1(kFallbackCatalogue), directory);
    if (!loaded) {
        qWarning("the text catalogue could not be loaded from %s", kCatalogueDirectory);
        return false;
    }
    translator->setParent(&app); // lives as long as the application
    return QCoreApplication::installTranslator(translator.release());
}

} // namespace kestrum

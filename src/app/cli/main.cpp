// kestrum-cli: the meter's exposure arithmetic, scales and settings for scripts.
// One line of JSON on stdout; errors on stderr with status 2 (usage) or 1 (failure).

#include "commandline.h"
#include "commands.h"
#include "settings/translationcatalogue.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace {

constexpr int kFailure = 1;
constexpr int kUsage = 2;

const char* const kUsageText =
    "usage: kestrum-cli scale COMPONENT STEP [--min A --max B]\n"
    "       kestrum-cli calculate --lv LV --mode av|tv|m [--iso S] [--aperture N] [--speed T]\n"
    "                             [--compensation C] [--profile ID]\n"
    "       kestrum-cli settings get KEY [--profile ID]\n"
    "       kestrum-cli settings set KEY VALUE [--profile ID]\n"
    "       kestrum-cli settings dump [--profile ID]\n"
    "       kestrum-cli profiles [add | rename ID NAME | delete INDEX | move FROM TO | use ID]\n"
    "                            (the first profile is never deleted or moved)\n"
    "       kestrum-cli meter [--lv LV] [--mode av|tv|m] [--seconds S] [--profile ID]\n"
    "       kestrum-cli log IMAGE --iso TEXT --aperture TEXT --speed TEXT --compensation C\n"
    "                       [--latitude LAT --longitude LON [--altitude ALT]]\n"
    "       kestrum-cli album\n"
    "       kestrum-cli read FILE\n";

// An invariant breach (limits stored in reverse order, say) is reported as a
// failure of the command rather than as a crash. Debug and info messages are the
// libraries' chatter, not the command's: they are left out.
void reportFatalAsFailure(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtDebugMsg || type == QtInfoMsg)
        return;
    std::fprintf(stderr, "kestrum-cli: %s\n", qPrintable(message));
    if (type == QtFatalMsg) {
        std::fflush(stderr);
        std::_Exit(kFailure);
    }
}

} // namespace

int main(int argc, char* argv[])
{
    qInstallMessageHandler(reportFatalAsFailure);
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kestrum-cli"));
    kestrum::installTranslationCatalogue(app);

    QStringList words = QCoreApplication::arguments().mid(1);
    if (words.isEmpty()) {
        std::cerr << kUsageText;
        return kUsage;
    }
    const QString command = words.takeFirst();
    try {
        if (command == u"scale")
            return kestrum::cli::runScale(words);
        if (command == u"calculate")
            return kestrum::cli::runCalculate(words);
        if (command == u"settings")
            return kestrum::cli::runSettings(words);
        if (command == u"meter")
            return kestrum::cli::runMeter(words);
        if (command == u"profiles")
            return kestrum::cli::runProfiles(words);
        if (command == u"log")
            return kestrum::cli::runLog(words);
        if (command == u"album")
            return kestrum::cli::runAlbum(words);
        if (command == u"read")
            return kestrum::cli::runRead(words);
        throw kestrum::cli::UsageError("unknown command " + command.toStdString());
    } catch (const kestrum::cli::UsageError& error) {
        std::cerr << "kestrum-cli: " << error.what() << '\n' << kUsageText;
        return kUsage;
    } catch (const kestrum::cli::Failure& error) {
        std::cerr << "kestrum-cli: " << error.what() << '\n';
        return kFailure;
    }
}

void kestrum::cli::printLine(const QString& line)
{
    std::cout << line.toStdString() << '\n' << std::flush;
}

#include "commandline.h"
#include "commands.h"
#include "json.h"

#include "platform/desktop/xdgdesktopservices.h"
#include "platform/desktop/xdgmailcomposer.h"
#include "platform/store/inipreferencestore.h"
#include "settings/settings.h"

#include <QCoreApplication>

namespace kestrum::cli {

namespace {

QString listing(const Settings& settings)
{
    QStringList profiles;
    for (const Profile& profile : settings.profiles()) {
        profiles.append(jsonObject(
            {{u"id"_qs, jsonString(profile.id)}, {u"name"_qs, jsonString(profile.name)}}));
    }
    return jsonObject({{u"current"_qs, jsonString(settings.currentProfileID())},
                       {u"profiles"_qs, jsonArray(profiles)}});
}

int integerArgument(const QString& text, const char* what)
{
    bool isInteger = false;
    const int value = text.toInt(&isInteger);
    if (!isInteger)
        throw UsageError(std::string(what) + " is a whole number, not " + text.toStdString());
    return value;
}

void expectIndex(const Settings& settings, int index)
{
    if (index < 0 || index >= settings.profiles().size())
        throw Failure("there is no profile at index " + std::to_string(index));
}

} // namespace

int runProfiles(const QStringList& words)
{
    const CommandLine line(words, {});
    const QString action = line.positional().value(0);

    IniPreferenceStore store(IniPreferenceStore::defaultFilePath());
    XdgDesktopServices links;
    const XdgMailComposer mailComposer(links);
    Settings settings(store, mailComposer, QCoreApplication::arguments());

    if (action.isEmpty()) {
        line.expectWords(0);
    } else if (action == u"add") {
        line.expectWords(1);
        settings.addProfile();
    } else if (action == u"rename") {
        line.expectWords(3);
        const QString id = line.word(1, "ID");
        if (!settings.renameProfile(id, line.word(2, "NAME")))
            throw Failure("there is no profile with the id " + id.toStdString());
    } else if (action == u"delete") {
        line.expectWords(2);
        const int index = integerArgument(line.word(1, "INDEX"), "an index");
        expectIndex(settings, index);
        settings.deleteProfiles({index});
    } else if (action == u"move") {
        line.expectWords(3);
        const int from = integerArgument(line.word(1, "FROM"), "an index");
        const int to = integerArgument(line.word(2, "TO"), "a destination");
        expectIndex(settings, from);
        if (to < 0 || to > settings.profiles().size())
            throw Failure("there is no destination " + std::to_string(to));
        settings.moveProfiles({from}, to);
    } else if (action == u"use") {
        line.expectWords(2);
        const QString id = line.word(1, "ID");
        if (!settings.switchProfile(id))
            throw UsageError("there is no profile with the id " + id.toStdString() +
                             " (kestrum-cli profiles lists them)");
    } else {
        throw UsageError("profiles takes add, rename, delete, move or use, not " +
                         action.toStdString());
    }

    // Deleting and moving wait for the event loop, as they do in the app.
    QCoreApplication::processEvents();
    if (!action.isEmpty() && !store.sync())
        throw Failure("could not write the settings file " + store.filePath().toStdString());
    printLine(listing(settings));
    return 0;
}

} // namespace kestrum::cli

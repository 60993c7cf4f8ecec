#include "commandline.h"
#include "commands.h"
#include "json.h"

#include "exposure/scale.h"

namespace kestrum::cli {

namespace {

template <typename C>
QString scaleJson(Fraction fraction, std::optional<double> minimum, std::optional<double> maximum)
{
    std::vector<C> entries = scale<C>(fraction);
    if (minimum && maximum)
        entries = cutScale<C>(entries, *minimum, *maximum);
    QStringList elements;
    for (const C& entry : entries)
        elements.append(jsonComponent(entry));
    return jsonArray(elements);
}

} // namespace

int runScale(const QStringList& words)
{
    const CommandLine line(words, {QStringLiteral("min"), QStringLiteral("max")});
    line.expectWords(2);
    const QString component = line.word(0, "COMPONENT");
    const Fraction fraction = fractionOrFull(line.word(1, "STEP"));
    const auto minimum = line.number(QStringLiteral("min"));
    const auto maximum = line.number(QStringLiteral("max"));
    if (minimum.has_value() != maximum.has_value())
        throw UsageError("--min and --max go together");

    if (component == u"aperture")
        printLine(scaleJson<Aperture>(fraction, minimum, maximum));
    else if (component == u"speed")
        printLine(scaleJson<ShutterSpeed>(fraction, minimum, maximum));
    else if (component == u"iso")
        printLine(scaleJson<ISO>(fraction, minimum, maximum));
    else if (component == u"compensation")
        printLine(scaleJson<Compensation>(fraction, minimum, maximum));
    else
        throw UsageError("COMPONENT is aperture, speed, iso or compensation, not " +
                         component.toStdString());
    return 0;
}

} // namespace kestrum::cli

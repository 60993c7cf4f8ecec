#include "commandline.h"

#include <charconv>
#include <string>

namespace kestrum::cli {

CommandLine::CommandLine(const QStringList& words, const QSet<QString>& knownOptions)
{
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString& word = words.at(i);
        if (!word.startsWith(QLatin1String("--"))) {
            m_positional.append(word);
            continue;
        }
        QString name = word.mid(2);
        QString value;
        if (const auto equals = name.indexOf(QLatin1Char('=')); equals >= 0) {
            value = name.mid(equals + 1);
            name.truncate(equals);
        } else if (i + 1 < words.size()) {
            value = words.at(++i);
        } else {
            throw UsageError("option --" + name.toStdString() + " needs a value");
        }
        if (!knownOptions.contains(name))
            throw UsageError("unknown option --" + name.toStdString());
        m_options.insert(name, value);
    }
}

QString CommandLine::word(qsizetype index, const char* what) const
{
    if (index >= m_positional.size())
        throw UsageError(std::string("missing ") + what);
    return m_positional.at(index);
}

void CommandLine::expectWords(qsizetype count) const
{
    if (m_positional.size() > count)
        throw UsageError("unexpected argument " + m_positional.at(count).toStdString());
    if (m_positional.size() < count)
        throw UsageError("missing argument");
}

std::optional<QString> CommandLine::option(const QString& name) const
{
    const auto found = m_options.constFind(name);
    if (found == m_options.constEnd())
        return std::nullopt;
    return *found;
}

std::optional<double> CommandLine::number(const QString& name) const
{
    const auto text = option(name);
    if (!text)
        return std::nullopt;
    const auto value = parseNumber(*text);
    if (!value)
        throw UsageError("--" + name.toStdString() + " needs a number, not " + text->toStdString());
    return value;
}

std::optional<double> parseNumber(const QString& text)
{
    const std::string bytes = text.toStdString();
    double value = 0.0;
    const char* begin = bytes.data();
    const char* end = begin + bytes.size();
    if (begin != end && *begin == '+')
        ++begin; // from_chars takes no plus sign
    const auto [stop, error] = std::from_chars(begin, end, value);
    if (bytes.empty() || error != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

} // namespace kestrum::cli

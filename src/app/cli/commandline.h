#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>
#include <stdexcept>

namespace kestrum::cli {

/// A command line that does not fit the command's form; exits with status 2.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A command that could not be carried out; exits with status 1.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The words after the command name: positional words and `--name value` options.
/// A word that starts with a single "-" (a negative number) is positional.
class CommandLine {
public:
    /// Splits `words`, accepting only the options in `knownOptions`.
    CommandLine(const QStringList& words, const QSet<QString>& knownOptions);

    const QStringList& positional() const { return m_positional; }
    /// The positional word at `index`, or a usage error naming `what`.
    QString word(qsizetype index, const char* what) const;
    /// Fails with a usage error unless there are exactly `count` positional words.
    void expectWords(qsizetype count) const;

    std::optional<QString> option(const QString& name) const;
    /// The option's value read as a number; a usage error when it is not one.
    std::optional<double> number(const QString& name) const;

private:
    QStringList m_positional;
    QHash<QString, QString> m_options;
};

/// The whole text read as a decimal number ("nan" and "inf" included), or nothing.
std::optional<double> parseNumber(const QString& text);

} // namespace kestrum::cli

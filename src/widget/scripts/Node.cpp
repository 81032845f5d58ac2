#include "widget/scripts/Node.h"

#include "widget/platform/ProcessRun.h"
#include <QFileInfo>

namespace {

const QString ourName = QStringLiteral("kestrelbay");

struct Launcher {
    QString shell;
    QString finder;
};

/// A user's profile may print something. What the script prints begins behind our name, between two
/// of the characters that separate records.
///
/// `(On)` sorts names in descending order; `nullglob` makes a missing nvm folder vanish.
Launcher zsh()
{
    return {QStringLiteral("/bin/zsh"), QStringLiteral(R"(setopt nullglob
extra=(/opt/homebrew/bin /usr/local/bin "$HOME/.volta/bin" "$HOME/.local/share/fnm/aliases/default/bin"
       "$HOME"/.nvm/versions/node/*/bin(On))
for dir in $extra; do PATH="$PATH:$dir"; done
builtin printf '\036%s\036' "$0"
exec node "$@")")};
}

/// The same search where there is no zsh; a glob comes in ascending order, so it is walked
/// backwards.
Launcher bash()
{
    return {QStringLiteral("/bin/bash"), QStringLiteral(R"(shopt -s nullglob
extra=(/opt/homebrew/bin /usr/local/bin "$HOME/.volta/bin" "$HOME/.local/share/fnm/aliases/default/bin")
nvm=("$HOME"/.nvm/versions/node/*/bin)
for ((i = ${#nvm[@]} - 1; i >= 0; i--)); do extra+=("${nvm[i]}"); done
for dir in "${extra[@]}"; do PATH="$PATH:$dir"; done
builtin printf '\036%s\036' "$0"
exec node "$@")")};
}

Launcher launcher()
{
    const Launcher preferred = zsh();
    return QFileInfo(preferred.shell).isExecutable() ? preferred : bash();
}

} // namespace

namespace Node {

std::unique_ptr<QProcess> process(const QStringList &arguments)
{
    const Launcher with = launcher();
    auto made = std::make_unique<QProcess>();
    made->setProgram(with.shell);
    ProcessRun::leadGroup(*made);
    made->setArguments(QStringList {QStringLiteral("-lc"), with.finder, ourName} + arguments);
    return made;
}

QByteArray scriptOutput(const QByteArray &all)
{
    const QByteArray mark = '\036' + ourName.toUtf8() + '\036';
    const qsizetype at = all.indexOf(mark);
    return at < 0 ? QByteArray() : all.mid(at + mark.size());
}

QFuture<Result> run(const QStringList &arguments, const std::optional<QString> &input,
    QObject *owner, std::optional<std::chrono::milliseconds> patience)
{
    const ProcessRun::Options options {
        .input = input.value_or(QString()).toUtf8(), .patience = patience, .outlivesParent = true};
    return ProcessRun::start(process(arguments), options, owner)
        .then([](const std::optional<ProcessResult> &ended) {
            // A shell that does not start is as good as one that finds no node.
            return ended ? Result {ended->status, scriptOutput(ended->output)} : Result();
        });
}

} // namespace Node

#include "widget/scripts/CodexHook.h"

#include "widget/core/Paths.h"
#include "widget/core/whenDone.h"
#include "widget/scripts/Node.h"
#include <QFileInfo>
#include <utility>

using namespace std::chrono_literals;

void CodexHook::applyCodexHook(bool launchWithCodex)
{
    if (!QFileInfo::exists(Paths::codexHook()) || !QFileInfo(Paths::codexHome()).isDir()) {
        return;
    }
    // One at a time, or the one that is slower would have the last word.
    if (m_running) {
        m_next = launchWithCodex;
    } else {
        run(launchWithCodex);
    }
}

void CodexHook::run(bool on)
{
    m_running = true;
    const QString wanted = on ? QStringLiteral("on") : QStringLiteral("off");
    // Whatever comes of it, the option stays as the user has set it.
    whenDone(Node::run({Paths::codexHook(), wanted}, std::nullopt, this, 30s), Node::Result(), this,
        [this](const Node::Result &) {
            m_running = false;
            if (const std::optional<bool> next = std::exchange(m_next, std::nullopt)) {
                run(*next);
            }
        });
}

#include "moc_CodexHook.cpp"

#include "widget/scripts/SideFiles.h"

#include "widget/core/modified.h"
#include "widget/core/Paths.h"
#include "widget/core/readJSON.h"
#include "widget/core/WidgetLog.h"
#include "widget/model/WidgetModel.h"

namespace {

template <typename Parsed> std::optional<Parsed> parseFile(const QString &path)
{
    // Read at once on the thread of the views: nothing that tells of two windows is larger.
    constexpr qint64 most = 1'000'000;
    const std::optional<QByteArray> bytes = readJSON(path, most);
    return bytes ? Parsed::parse({bytes->constData(), static_cast<std::size_t>(bytes->size())})
                 : std::nullopt;
}

} // namespace

SideFiles::SideFiles(WidgetModel &model)
    : m_model(model)
{
}

bool SideFiles::readLimits()
{
    const std::optional<TimePoint> stamp = modified(Paths::limits());
    if (stamp == m_limitsStamp) {
        return false;
    }
    const auto limits = parseFile<Limits>(Paths::limits());
    if (!limits) {
        // A file that went away says nothing about what it told before.
        if (stamp && stamp != m_limitsFailed) {
            WidgetLog::write(QStringLiteral("usage-limits.json: cannot read or parse"));
        }
        m_limitsFailed = stamp;
        return false;
    }
    m_limitsStamp = stamp;
    m_fileLimits = limits;
    mergeLimits();
    return true;
}

bool SideFiles::readSideFiles()
{
    const std::optional<TimePoint> stamp = modified(Paths::codexLimits());
    if (stamp == m_codexStamp) {
        return false;
    }
    m_codexStamp = stamp;
    m_model.setCodex(parseFile<CodexLimits>(Paths::codexLimits()));
    return true;
}

void SideFiles::setAccountLimits(const std::optional<Limits> &limits)
{
    m_accountLimits = limits;
    mergeLimits();
}

void SideFiles::mergeLimits()
{
    m_model.setLimits(Limits::merge(m_fileLimits, m_accountLimits));
}

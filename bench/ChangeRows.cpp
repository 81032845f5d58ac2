#include "Frames.h"
#include "Measure.h"
#include "pictures/Canned.h"
#include "pictures/Stage.h"
#include "Row.h"
#include <array>
#include <QDeadlineTimer>

namespace {

constexpr double frameOf60Hz = 16.7;
constexpr int repetitions = 15;

void fill(Stage &stage)
{
    stage.model().setLanguage(QStringLiteral("en"));
    stage.model().loadStats(Canned::statistics({.days = 3653, .sessions = 5000}));
    stage.model().setLimits(Canned::limits());
    stage.model().setExpanded(true);
    stage.show();
    Q_UNUSED(stage.settle());
}

/// Lets what the last change has set in motion come to its end.
void rest()
{
    const QDeadlineTimer deadline(1'000);
    while (!deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    }
}

/// Goes through these values over and over.
template <typename Value, std::size_t count> class Cycle final {
public:
    explicit Cycle(const std::array<Value, count> &values)
        : m_values(values)
    {
    }

    Value next() { return m_values.at(++m_place % count); }

private:
    std::array<Value, count> m_values;
    std::size_t m_place = 0;
};

Row row(const char *name, double time, double unchanged)
{
    return {QLatin1String(name), time, frameOf60Hz, QStringLiteral("ms"),
        QStringLiteral("%1 unchanged frames").arg(time / unchanged, 0, 'f', 1)};
}

} // namespace

QList<Row> changeRows()
{
    Stage stage;
    fill(stage);
    Cycle languages(std::array {"ru", "de", "en"});
    const auto choose = [&stage](HistoryTab tab) {
        return Subject {[&stage, tab] {
                            stage.model().selectTab(tab);
                            drawFrame(stage.window());
                        },
            rest};
    };
    const QList<double> times = medianTimes(repetitions,
        {
            {[&] { drawEverything(stage.window()); }, rest},
            {[&] {
                 stage.model().setLanguage(QLatin1String(languages.next()));
                 drawFrame(stage.window());
             },
                rest},
            choose(HistoryTab::Days),
            choose(HistoryTab::Weeks),
            choose(HistoryTab::Months),
            choose(HistoryTab::Sessions),
        });
    // The slowest tab, whichever it is.
    const double tab = *std::max_element(times.begin() + 2, times.end());
    return {row("language change, ten years", times.at(1), times.at(0)),
        row("tab change, ten years", tab, times.at(0))};
}

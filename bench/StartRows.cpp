#include "Measure.h"
#include "ownProgram.h"
#include "Row.h"
#include "Shown.h"
#include "TenYears.h"
#include <algorithm>

using namespace std::chrono_literals;

namespace {

constexpr int starts = 15;
constexpr int looks = 3; ///< at memory, which hardly varies

const QStringList widget {ownProgram("kestrelbay")};
const QStringList empty {ownProgram("kestrelbay-bench-empty")};

/// What the widget and the empty window took, round by round.
struct Both {
    QList<double> widget;
    QList<double> empty;

    [[nodiscard]] double ratio() const { return median(widget) / median(empty); }
    [[nodiscard]] QString text(const char *unit) const
    {
        return QStringLiteral("%1 / %2 %3")
            .arg(median(widget), 0, 'f', 1)
            .arg(median(empty), 0, 'f', 1)
            .arg(QLatin1String(unit));
    }
};

Row row(const char *name, const Both &both, double budget, const QString &detail)
{
    return {QLatin1String(name), both.ratio(), budget, QStringLiteral("x"), detail};
}

Row frameRow()
{
    Both wall;
    Both processor;
    const auto start = [&](const QStringList &program, QList<double> Both::*whose) {
        const Shown::Times times = Shown(program, Shown::Frames::Heard).firstFrame();
        (wall.*whose).append(times.wall);
        (processor.*whose).append(times.processor);
    };
    for (int i = 0; i < starts; ++i) {
        start(empty, &Both::empty);
        start(widget, &Both::widget);
    }
    return row("first frame / empty window", wall, 2,
        QStringLiteral("%1, processor time %2, %3 x")
            .arg(wall.text("ms"), processor.text("ms"))
            .arg(processor.ratio(), 0, 'f', 2));
}

Row memoryRow(TenYears::Home &home)
{
    Both resident;
    Both proportional;
    const auto look = [&](const QStringList &program, QList<double> Both::*whose) {
        Shown shown(program);
        shown.rest(5s);
        home.renew();
        shown.rest(5s);
        const Shown::Memory memory = shown.memory();
        (resident.*whose).append(memory.resident);
        (proportional.*whose).append(memory.proportional);
    };
    for (int i = 0; i < looks; ++i) {
        look(empty, &Both::empty);
        look(widget, &Both::widget);
    }
    return row("memory, ten years / empty window", resident, 1.5,
        QStringLiteral("%1 resident, %2 proportional")
            .arg(resident.text("MB"), proportional.text("MB")));
}

} // namespace

QList<Row> startRows()
{
    TenYears::Home home(TenYears::Panel::Shown);
    return {frameRow(), memoryRow(home)};
}

// kestrelbay-bench FILE [GROUP...]: measures the budgets, or those groups of them, prints them as a
// table and writes FILE as JSON.
//
// Runs in an empty home of its own (tools/with-home --new). The status is 1 when a budget is
// missed.

#include "pictures/Stage.h"
#include "Row.h"
#include <algorithm>
#include <array>
#include <cstdio>
#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace {

void print(const Row &row)
{
    const QString verdict = row.passes()
        ? QStringLiteral("PASS")
        : QStringLiteral("over by %1 %2").arg(row.figure - row.budget, 0, 'f', 2).arg(row.unit);
    const QString figure = QStringLiteral("%1 %2").arg(row.figure, 0, 'f', 2).arg(row.unit, -2);
    const QString budget = QStringLiteral("%1 %2").arg(row.budget, 0, 'f', 2).arg(row.unit, -2);
    const QString line = QStringLiteral("%1 %2 %3   %4  %5")
                             .arg(row.name, -40)
                             .arg(figure, 12)
                             .arg(budget, 12)
                             .arg(verdict, -16)
                             .arg(row.detail);
    std::printf("%s\n", qUtf8Printable(line));
    std::fflush(stdout);
}

QJsonObject json(const Row &row)
{
    return {{QStringLiteral("name"), row.name}, {QStringLiteral("figure"), row.figure},
        {QStringLiteral("budget"), row.budget}, {QStringLiteral("unit"), row.unit},
        {QStringLiteral("detail"), row.detail}, {QStringLiteral("passes"), row.passes()}};
}

bool save(const QList<Row> &rows, const QString &path)
{
    QJsonArray all;
    std::ranges::transform(rows, std::back_inserter(all), json);
    QSaveFile file(path);
    const QByteArray bytes = QJsonDocument(all).toJson();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

struct Group {
    const char *name;
    QList<Row> (*measure)();
};

constexpr std::array groups {
    Group {"scroll", scrollRows},
    Group {"change", changeRows},
    Group {"hover", hoverRows},
    Group {"glide", glideRows},
    Group {"stats", statsRows},
    Group {"start", startRows},
    Group {"idle", idleRows},
    Group {"tick", tickRows},
    Group {"indexer", indexerRows},
};

/// All groups when none is named.
QList<Row> measure(const QStringList &names)
{
    std::printf("%-40s %12s %12s\n", "", "figure    ", "at most   ");
    QList<Row> rows;
    for (const Group &group : groups) {
        if (!names.isEmpty() && !names.contains(QLatin1String(group.name))) {
            continue;
        }
        for (const Row &row : group.measure()) {
            print(row);
            rows.append(row);
        }
    }
    return rows;
}

bool isGroup(const QString &name)
{
    return std::ranges::any_of(
        groups, [&name](const Group &group) { return name == QLatin1String(group.name); });
}

} // namespace

int main(int argc, char *argv[])
{
    Stage::setUp();
    const QApplication application(argc, argv);
    const QStringList names = QCoreApplication::arguments().mid(2);
    if (argc < 2 || !std::ranges::all_of(names, isGroup)) {
        std::fputs("usage: kestrelbay-bench FILE [GROUP]...\ngroups:", stderr);
        for (const Group &group : groups) {
            std::fprintf(stderr, " %s", group.name);
        }
        std::fputs("\n", stderr);
        return 2;
    }
    Stage::setFont();
    if (!Stage::furnishHome(QStringLiteral(KESTRELBAY_SOURCE "/companions/i18n.json"))) {
        return 1;
    }
    const QList<Row> rows = measure(names);
    const QString file = QString::fromLocal8Bit(argv[1]);
    if (!save(rows, file)) {
        std::fprintf(stderr, "kestrelbay-bench: cannot write %s\n", argv[1]);
        return 1;
    }
    return std::ranges::all_of(rows, &Row::passes) ? 0 : 1;
}

#pragma once

#include "FakeClock.h"
#include "TestFiles.h"
#include "widget/core/Paths.h"
#include "widget/model/WidgetModel.h"

/// A model that offers two languages, at noon of 5 March 2026 in Berlin.
class ModelFixture : public testing::Test {
protected:
    void SetUp() override
    {
        writeFile(Paths::i18n(), R"({
            "en":{"langName":"English","collecting":"Collecting","needNode":"Node is missing",
                  "today":"Today","fiveHours":"5 hours","week":"Week","noData":"No data",
                  "tabWeeks":"Weeks","dayShort":"d MMM"},
            "de":{"langName":"Deutsch","collecting":"Wird gesammelt","noData":"Keine Daten"}})");
        m_model = std::make_unique<WidgetModel>(m_clock, [this] { return m_system; });
    }

    /// Sessions of several providers, and this many paid days up to 5 March.
    static ParsedStats parsed(int days = 1)
    {
        ParsedStats made;
        made.stats.days = PeriodRows();
        for (int before = days - 1; before >= 0; --before) {
            PeriodRow row;
            row.date = QDate(2026, 3, 5).addDays(-before).toString(Qt::ISODate);
            row.cost = 1;
            made.stats.days->append(row);
        }
        for (const char *provider : {"claude", "codex", "claude", "other"}) {
            SessionItem item;
            item.title = QLatin1String(provider);
            item.provider = QLatin1String(provider);
            made.sessions << item;
        }
        return made;
    }

    FakeClock m_clock {
        std::chrono::sys_days(std::chrono::year(2026) / 3 / 5) + std::chrono::hours(11)};
    QStringList m_system;
    std::unique_ptr<WidgetModel> m_model;
};

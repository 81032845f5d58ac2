#pragma once

#include "FakeClock.h"
#include "TestFiles.h"
#include "widget/core/Paths.h"
#include "widget/core/WidgetLog.h"
#include "widget/model/WidgetModel.h"

/// An empty data folder beside a model and a clock.
class DataFolder : public testing::Test {
protected:
    void SetUp() override
    {
        WidgetLog::flush();
        QDir(Paths::dir()).removeRecursively();
        QFile::remove(Paths::limits());
    }

    static QByteArray logged()
    {
        WidgetLog::flush();
        QFile file(Paths::log());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    FakeClock m_clock {TimePoint(std::chrono::hours(500'000))};
    WidgetModel m_model {m_clock, [] { return QStringList(); }};
};

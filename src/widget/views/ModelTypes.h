#pragma once

#include "widget/model/Dashboard.h"
#include "widget/model/GeneralSettings.h"
#include "widget/model/PanelTexts.h"
#include "widget/model/SessionListModel.h"
#include "widget/model/SettingsTexts.h"
#include "widget/model/SummaryCell.h"
#include "widget/model/WidgetModel.h"
#include "widget/scripts/SyncSettings.h"
#include "widget/views/settings/LinkedDevices.h"
#include <QtQml/qqml.h>

// The model's types under their QML names, so that the model itself needs no QML and qmllint still
// knows every property.

struct WidgetModelInQml {
    Q_GADGET
    QML_FOREIGN(WidgetModel)
    QML_NAMED_ELEMENT(WidgetModel)
    QML_UNCREATABLE("There is one model, and the program makes it.")
};

struct SessionListModelInQml {
    Q_GADGET
    QML_FOREIGN(SessionListModel)
    QML_NAMED_ELEMENT(SessionListModel)
    QML_UNCREATABLE("It belongs to the model.")
};

struct PanelTextsInQml {
    Q_GADGET
    QML_FOREIGN(PanelTexts)
    QML_VALUE_TYPE(panelTexts)
};

struct SummaryCellInQml {
    Q_GADGET
    QML_FOREIGN(SummaryCell)
    QML_VALUE_TYPE(summaryCell)
};

struct DashboardInQml {
    Q_GADGET
    QML_FOREIGN(Dashboard)
    QML_NAMED_ELEMENT(Dashboard)
    QML_UNCREATABLE("There is one, and the program makes it.")
};

struct FreshnessInQml {
    Q_GADGET
    QML_FOREIGN(Freshness)
    QML_VALUE_TYPE(freshness)
};

struct LimitRowInQml {
    Q_GADGET
    QML_FOREIGN(LimitRow)
    QML_VALUE_TYPE(limitRow)
};

struct LegendItemInQml {
    Q_GADGET
    QML_FOREIGN(LegendItem)
    QML_VALUE_TYPE(legendItem)
};

struct PeriodInfoInQml {
    Q_GADGET
    QML_FOREIGN(PeriodInfo)
    QML_VALUE_TYPE(periodInfo)
};

struct GeneralSettingsInQml {
    Q_GADGET
    QML_FOREIGN(GeneralSettings)
    QML_NAMED_ELEMENT(GeneralSettings)
    QML_UNCREATABLE("It is there for the names of the options.")
};

struct SettingsTextsInQml {
    Q_GADGET
    QML_FOREIGN(SettingsTexts)
    QML_VALUE_TYPE(settingsTexts)
};

struct SyncSettingsInQml {
    Q_GADGET
    QML_FOREIGN(SyncSettings)
    QML_NAMED_ELEMENT(SyncSettings)
    QML_UNCREATABLE("The program makes it.")
};

struct LinkedDevicesInQml {
    Q_GADGET
    QML_FOREIGN(LinkedDevices)
    QML_NAMED_ELEMENT(LinkedDevices)
    QML_UNCREATABLE("It belongs to its page.")
};

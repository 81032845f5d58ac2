#include "widget/model/GeneralSettings.h"

GeneralSettings::GeneralSettings(QObject *parent)
    : QObject(parent)
{
}

void GeneralSettings::setValues(const QMap<Option, bool> &values)
{
    m_values = values;
    Q_EMIT valuesChanged();
}

void GeneralSettings::setCodexInstalled(bool installed)
{
    m_codexInstalled = installed;
    Q_EMIT codexInstalledChanged();
}

#include "moc_GeneralSettings.cpp"

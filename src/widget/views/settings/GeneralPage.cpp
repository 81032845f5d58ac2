#include "widget/views/settings/GeneralPage.h"

#include "widget/model/OptionTable.h"
#include "widget/model/WidgetModel.h"

GeneralPage::GeneralPage(const WidgetModel &model, GeneralSettings &settings, QObject *parent)
    : QObject(parent)
    , m_model(model)
    , m_settings(settings)
{
    connect(&model, &WidgetModel::stringsChanged, this, &GeneralPage::textsChanged);
    connect(&model, &WidgetModel::stringsChanged, this, &GeneralPage::updateChanged);
    connect(&model, &WidgetModel::modeChanged, this, &GeneralPage::viewChanged);
    connect(&model, &WidgetModel::updateChanged, this, &GeneralPage::updateChanged);
    connect(&settings, &GeneralSettings::valuesChanged, this, &GeneralPage::valuesChanged);
    connect(&settings, &GeneralSettings::codexInstalledChanged, this, &GeneralPage::valuesChanged);
}

SettingsTexts GeneralPage::texts() const
{
    return SettingsTexts(m_model.strings());
}

QList<bool> GeneralPage::values() const
{
    QList<bool> values;
    for (const OptionRow &row : optionTable()) {
        values << m_settings.binding(row.option).value();
    }
    return values;
}

QStringList GeneralPage::titles() const
{
    QStringList titles;
    for (const OptionRow &row : optionTable()) {
        titles << optionTitle(row.option, *m_model.strings());
    }
    return titles;
}

void GeneralPage::flip(int option)
{
    const auto binding = m_settings.binding(static_cast<GeneralSettings::Option>(option));
    binding.set(!binding.value());
}

QStringList GeneralPage::viewNames() const
{
    return {m_model.t(QStringLiteral("menuViewIcon")), m_model.t(QStringLiteral("menuViewWindow"))};
}

int GeneralPage::view() const
{
    return m_model.mode() == ViewMode::Icon ? 0 : 1;
}

QStringList GeneralPage::languageNames() const
{
    QStringList names {m_model.t(QStringLiteral("menuSystem"))};
    for (const QString &code : m_model.languages()) {
        names << m_model.languageName(code);
    }
    return names;
}

int GeneralPage::language() const
{
    const QString &taken = m_model.langPref();
    const qsizetype place = m_model.languages().indexOf(taken);
    // The remembered one may be offered no more.
    return !taken.isEmpty() && place < 0 ? -1 : static_cast<int>(place) + 1;
}

QString GeneralPage::update() const
{
    const std::optional<QString> &version = m_model.update();
    return version ? m_model.t(QStringLiteral("menuUpdate"), {*version}) : QString();
}

void GeneralPage::selectView(int index)
{
    Q_EMIT m_settings.viewRequested(index == 0 ? ViewMode::Icon : ViewMode::Window);
}

void GeneralPage::selectLanguage(int index)
{
    Q_EMIT m_settings.languageRequested(m_model.languages().value(index - 1));
}

void GeneralPage::getUpdate()
{
    Q_EMIT m_settings.updateRequested();
}

#include "moc_GeneralPage.cpp"

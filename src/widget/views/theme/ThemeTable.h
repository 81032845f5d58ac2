#pragma once

#include <QObject>
#include <QProperty>

/// One value of a table: C++ reads it as Table::name(), QML as a property that notifies.
#define THEME_ROW(type, name, ...)                                                                 \
    Q_PROPERTY(type name READ name NOTIFY changed)                                                 \
public:                                                                                            \
    [[nodiscard]] static type name()                                                               \
    {                                                                                              \
        return __VA_ARGS__;                                                                        \
    }

/// A table of the theme. C++ reads its values without an object; every QML engine has an object of
/// its own, and all of them notify together. Main thread only.
class ThemeTable : public QObject {
    Q_OBJECT

public:
    ThemeTable() { }

    /// To be called when a value of any table has become another.
    static void announceChange() { s_changes.setValue(s_changes.value() + 1); }

Q_SIGNALS:
    void changed();

private:
    inline static QProperty<int> s_changes {0};
    QPropertyNotifier m_following = s_changes.addNotifier([this] { Q_EMIT changed(); });
};

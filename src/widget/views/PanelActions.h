#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// What a user asks for in the panel. Views only ask; the shell decides and does.
class PanelActions final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The shell makes it.")

public:
    explicit PanelActions(QObject *parent);

Q_SIGNALS:
    void refreshRequested();
    void expandRequested();
    void providerRequested(int index);
    void updateRequested();
    void settingsRequested();
    void pinRequested();
    void hideRequested();
    void quitRequested();
    /// The panel is being dragged by an empty place.
    void moveRequested();
};

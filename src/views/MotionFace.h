#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// The animation timings as QML sees them: milliseconds, 0 while every animation is off.
class MotionFace final : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Motion)
    QML_SINGLETON
    Q_PROPERTY(bool reduced READ reduced NOTIFY reducedChanged)
    Q_PROPERTY(int hover READ hover NOTIFY reducedChanged)
    Q_PROPERTY(int press READ press NOTIFY reducedChanged)
    Q_PROPERTY(int tab READ tab NOTIFY reducedChanged)
    Q_PROPERTY(int expand READ expand NOTIFY reducedChanged)
    Q_PROPERTY(int number READ number NOTIFY reducedChanged)
    Q_PROPERTY(int fill READ fill NOTIFY reducedChanged)
    Q_PROPERTY(int tip READ tip NOTIFY reducedChanged)
    Q_PROPERTY(int grow READ grow NOTIFY reducedChanged)
    Q_PROPERTY(int transition READ transition CONSTANT)
    Q_PROPERTY(double pressScale READ pressScale CONSTANT)
    Q_PROPERTY(double unfoldShift READ unfoldShift CONSTANT)
    Q_PROPERTY(double popShift READ popShift CONSTANT)

public:
    explicit MotionFace(QObject *parent = nullptr);
    ~MotionFace() override;
    Q_DISABLE_COPY_MOVE(MotionFace)

    [[nodiscard]] static bool reduced();
    [[nodiscard]] static int hover();
    [[nodiscard]] static int press();
    [[nodiscard]] static int tab();
    [[nodiscard]] static int expand();
    [[nodiscard]] static int number();
    [[nodiscard]] static int fill();
    [[nodiscard]] static int tip();
    /// How long one element of a row takes to grow.
    [[nodiscard]] static int grow();
    /// How long element i of a row waits before it grows.
    Q_INVOKABLE [[nodiscard]] static int growDelay(int i);
    /// How much of it element i of a row has grown, 0…1, so long after the first one began.
    Q_INVOKABLE [[nodiscard]] static double growth(int i, double milliseconds);
    /// How long `unfold` and `pop` take; they go on whether or not motion is reduced.
    [[nodiscard]] static int transition();
    [[nodiscard]] static double pressScale();
    [[nodiscard]] static double unfoldShift();
    [[nodiscard]] static double popShift();

Q_SIGNALS:
    void reducedChanged();
};

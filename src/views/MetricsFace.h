#pragma once

#include "views/theme/Metrics.h"
#include <QObject>
#include <QtQml/qqmlregistration.h>

/// The sizes as QML sees them.
class MetricsFace final : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Metrics)
    QML_SINGLETON
    Q_PROPERTY(double radius MEMBER m_radius CONSTANT)
    Q_PROPERTY(double compactBody MEMBER m_compactBody CONSTANT)
    Q_PROPERTY(double wideBody MEMBER m_wideBody CONSTANT)
    Q_PROPERTY(double chartWidth MEMBER m_chartWidth CONSTANT)
    Q_PROPERTY(double chartHeight MEMBER m_chartHeight CONSTANT)
    Q_PROPERTY(double areaHeight MEMBER m_areaHeight CONSTANT)
    Q_PROPERTY(double sessionsMaxHeight MEMBER m_sessionsMaxHeight CONSTANT)
    Q_PROPERTY(double sessionText MEMBER m_sessionText CONSTANT)
    Q_PROPERTY(double sessionPad MEMBER m_sessionPad CONSTANT)
    Q_PROPERTY(double sessionRow MEMBER m_sessionRow CONSTANT)
    Q_PROPERTY(double sessionFade MEMBER m_sessionFade CONSTANT)
    Q_PROPERTY(double textScale READ textScale CONSTANT)

public:
    using QObject::QObject;

    /// By how much texts are larger than the views say, because the system's font is.
    [[nodiscard]] static double textScale();

private:
    double m_radius = Metrics::radius;
    double m_compactBody = Metrics::compactBody;
    double m_wideBody = Metrics::wideBody;
    double m_chartWidth = Metrics::chartWidth;
    double m_chartHeight = Metrics::chartHeight;
    double m_areaHeight = Metrics::areaHeight;
    double m_sessionsMaxHeight = Metrics::sessionsMaxHeight;
    double m_sessionText = Metrics::sessionText;
    double m_sessionPad = Metrics::sessionPad;
    double m_sessionRow = Metrics::sessionRow;
    double m_sessionFade = Metrics::sessionFade;
};

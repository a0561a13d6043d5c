#pragma once

#include <QWidget>

class CKPDateObs;
class QAction;
class QLabel;

/// What the host knows of the observer: body, coordinates, altitude, zone, displayed and universal time.
class CObserverPanel : public QWidget
{
    Q_OBJECT

public:
    explicit CObserverPanel(QWidget* parent);

    void Refresh(const CKPDateObs& observer);
    /// Puts a box beside the time that follows the switch of the clock.
    void SetClockSwitch(QAction* action);
    /// The time system with its offset: "標準時（UT+9:00）".
    [[nodiscard]] static QString TimeSystemText(const CKPDateObs& observer);

private:
    QLabel* AddRow(const QString& caption);

    QLabel* m_body = nullptr; ///< children of this, as the others
    QLabel* m_longitude = nullptr;
    QLabel* m_latitude = nullptr;
    QLabel* m_altitude = nullptr;
    QLabel* m_zone = nullptr;
    QLabel* m_universal = nullptr;
    QLabel* m_displayed = nullptr;
};

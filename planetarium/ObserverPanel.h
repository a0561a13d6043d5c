#pragma once

#include <QWidget>

class CKPDateObs;
class QLabel;

/// What the host knows of the observer: body, coordinates, altitude, zone, universal and local time.
class CObserverPanel : public QWidget
{
    Q_OBJECT

public:
    explicit CObserverPanel(QWidget* parent);

    void Refresh(const CKPDateObs& observer);

private:
    QLabel* AddRow(const QString& caption);

    QLabel* m_body = nullptr; ///< children of this, as the others
    QLabel* m_longitude = nullptr;
    QLabel* m_latitude = nullptr;
    QLabel* m_altitude = nullptr;
    QLabel* m_zone = nullptr;
    QLabel* m_universal = nullptr;
    QLabel* m_local = nullptr;
};

#pragma once

#include <QWidget>

class QAction;
class QLabel;
class QVBoxLayout;

/// The first things to do, in sight: how a click chooses the site, and a button with a word of explanation for every
/// other way to it.
class CSiteChoices : public QWidget
{
    Q_OBJECT

public:
    explicit CSiteChoices(QWidget* parent);

    /// A button that runs the action, named and enabled as the action is. While the action is disabled its status tip,
    /// which is to say why, stands in place of the hint.
    void Add(QAction* action, const QString& hint);
    /// Names the body that the picture shows.
    void ShowBody(const QString& body);

private:
    QVBoxLayout* m_rows; ///< of this, as the others
    QLabel* m_picture;
};

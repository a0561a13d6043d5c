#pragma once

#include "host/control_window/ControlWindow.h"

/// The sky-engine control: one text in, one text out.
class CCorKiv : public CControlWindow
{
    Q_OBJECT

public:
    using CControlWindow::CControlWindow;

    static constexpr int DefaultVariant = 5;

    /// Creates the control class that belongs to the variant (3, 4, any other: the default) as a hidden child.
    [[nodiscard]] bool Create(int variant, QWidget* parent, const QRect& rect, int controlId);

    [[nodiscard]] int Variant() const { return m_variant; }
    void SetVariant(int variant) { m_variant = variant; }

    /// Sends a command line and returns the engine's answer; empty while the engine does not exist.
    QString Command(const QString& line);

    /// The control's boolean property 1.
    void SetActive(bool active);

Q_SIGNALS:
    /// A line was sent; for transcripts and logs.
    void CommandSent(const QString& line, const QString& answer);

private:
    int m_variant = DefaultVariant;
};

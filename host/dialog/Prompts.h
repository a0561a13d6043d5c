#pragma once

#include <QString>

class QWidget;

/// Every message box and file dialog goes through here, so that a test can put its own answers in their place.
class IPrompts
{
public:
    enum class Icon
    {
        None,
        Information,
        Warning,
        Exclamation
    };
    enum class Buttons
    {
        Ok,
        OkCancel
    };
    enum class Answer
    {
        Ok,
        Cancel
    };

    IPrompts() = default;
    IPrompts(const IPrompts&) = delete;
    IPrompts& operator=(const IPrompts&) = delete;
    virtual ~IPrompts() = default;

    /// Shows a box and waits for the answer; closing the box cancels, and where there is no Cancel means OK.
    virtual Answer Show(QWidget* parent, const QString& text, Icon icon, Buttons buttons) = 0;

    /// Asks for a file to open; empty when the user cancels.
    virtual QString OpenFile(QWidget* parent) = 0;

    /// Those of the host's context, message boxes of the toolkit when it brings none.
    [[nodiscard]] static IPrompts& Current();
};

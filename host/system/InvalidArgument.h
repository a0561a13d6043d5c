#pragma once

#include <QString>

#include <stdexcept>

/// An argument that cannot be taken: thrown by what was called, shown to the user once at the edge of the dialog.
class CInvalidArgument : public std::invalid_argument
{
public:
    /// `what` speaks to the programmer; the text is for the user: cause and way out, where there is one.
    explicit CInvalidArgument(const char* what, QString userText = {})
        : std::invalid_argument(what), m_userText(std::move(userText))
    {
    }

    /// Empty when the user only learns that there was one.
    [[nodiscard]] const QString& UserText() const { return m_userText; }

private:
    QString m_userText;
};

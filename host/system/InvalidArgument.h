#pragma once

#include <QString>

#include <stdexcept>

/// An argument that cannot be taken: thrown by what was called, told to the user once at the edge of the dialog.
class CInvalidArgument : public std::invalid_argument
{
public:
    /// `what` speaks to the programmer; the text tells the user cause and way out where there is one to tell.
    explicit CInvalidArgument(const char* what, QString userText = {})
        : std::invalid_argument(what), m_userText(std::move(userText))
    {
    }

    /// Empty when the user is told no more than that there was one.
    [[nodiscard]] const QString& UserText() const { return m_userText; }

private:
    QString m_userText;
};

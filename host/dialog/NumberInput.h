#pragma once

#include <QValidator>

/// What a number box takes: a decimal number or the beginning of one. Full-width digits and signs, as an input method
/// gives them, become plain ones and line breaks go, however the text got there; what is no number is refused whole.
class CNumberInput : public QValidator
{
    Q_OBJECT

public:
    using QValidator::QValidator;

    /// `isWhole`: without a decimal point; `longest`: characters.
    void Allow(bool isWhole, int longest);
    [[nodiscard]] bool IsWhole() const { return m_isWhole; }
    [[nodiscard]] int Longest() const { return m_longest; }

    /// Plain digits, sign and point for their other forms, without white space behind them.
    [[nodiscard]] static QString Folded(const QString& text);

    State validate(QString& text, int& caret) const override;

private:
    bool m_isWhole = false;
    int m_longest = 32767;
};

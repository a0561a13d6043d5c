#include "host/dialog/NumberInput.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

void CNumberInput::Allow(bool isWhole, int longest)
{
    m_isWhole = isWhole;
    m_longest = longest;
}

QString CNumberInput::Folded(const QString& text)
{
    QString folded;
    for (const QChar character : text.normalized(QString::NormalizationForm_KC)) {
        switch (character.unicode()) {
        case u'\u2212': // minus sign
        case u'\u2010': // hyphen
        case u'\u30FC': // what the minus key gives in kana input
            folded += u'-';
            break;
        case u'\u3002': // what the point key gives in kana input
            folded += u'.';
            break;
        case u'\n':
        case u'\r':
        case u'\t':
            folded += u' ';
            break;
        default:
            folded += character;
        }
    }
    // Blanks in front are a format's own; between digits they are no part of a number.
    while (folded.endsWith(u' '))
        folded.chop(1);
    return folded;
}

QValidator::State CNumberInput::validate(QString& text, int& caret) const
{
    static const QRegularExpression whole(u"^ *[+-]?[0-9]*$"_s);
    static const QRegularExpression decimal(u"^ *[+-]?[0-9]*\\.?[0-9]*$"_s);
    const QString folded = Folded(text);
    if (folded.size() > m_longest || !(m_isWhole ? whole : decimal).match(folded).hasMatch())
        return Invalid;
    if (folded != text) {
        caret = static_cast<int>(Folded(text.left(caret)).size());
        text = folded;
        caret = std::min(caret, static_cast<int>(text.size()));
    }
    return Acceptable;
}

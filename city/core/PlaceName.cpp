#include "city/core/PlaceName.h"

#include "host/text/CodePage932.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
/// The characters, each once, that the code page of the files lacks.
QString Missing(const QString& name)
{
    QString missing;
    for (qsizetype i = 0; i < name.size();) {
        const qsizetype length = name.at(i).isHighSurrogate() && i + 1 < name.size() ? 2 : 1;
        const QString character = name.sliced(i, length);
        if (!CodePage932::IsRepresentable(character) && !missing.contains(character))
            missing += character;
        i += length;
    }
    return missing;
}

bool IsControl(QChar character)
{
    return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}
} // namespace

QString PlaceName::Complaints(const QString& name, const QString& caption)
{
    constexpr int mostShown = 20; // of the characters that cannot be kept
    QString complaints;
    if (name.contains(u','))
        complaints += caption + u"には半角のコンマ「,」を使えません。全角の「，」などを使ってください。\n"_s;
    if (name.startsWith(u'@') || name.startsWith(u'#'))
        complaints += caption + u"の先頭には半角の「@」と「#」を使えません。\n"_s;
    if (std::any_of(name.begin(), name.end(), IsControl))
        complaints += caption + u"には改行やタブなどの制御文字を使えません。\n"_s;
    QString missing = Missing(name);
    missing.removeIf(IsControl);
    if (!missing.isEmpty())
        complaints +=
            caption + u"には次の文字を使えません（Shift_JIS にない文字です）："_s + missing.left(mostShown) + u'\n';
    return complaints;
}

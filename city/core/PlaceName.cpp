#include "city/core/PlaceName.h"

#include "host/text/CodePage932.h"
#include "host/text/PlaceListFormat.h"

#include <algorithm>
#include <array>
#include <utility>

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

QString PlaceName::Normalized(const QString& name)
{
    constexpr std::array<std::pair<char16_t, char16_t>, 7> twins{{{u'\u301C', u'\uFF5E'},
                                                                  {u'\u2212', u'\uFF0D'},
                                                                  {u'\u2016', u'\u2225'},
                                                                  {u'\u2014', u'\u2015'},
                                                                  {u'\u00A2', u'\uFFE0'},
                                                                  {u'\u00A3', u'\uFFE1'},
                                                                  {u'\u00AC', u'\uFFE2'}}};
    QString normalized = name.trimmed();
    for (const auto& [other, own] : twins)
        normalized.replace(QChar(other), QChar(own));
    return normalized;
}

QString PlaceName::Complaints(const QString& name, const QString& caption)
{
    constexpr int mostShown = 20; // of the characters that cannot be kept
    QString complaints;
    if (name.contains(u','))
        complaints += caption + u"には半角のコンマ「,」を使えません。全角の「，」などを使ってください。\n"_s;
    if (PlaceListFormat::BeginsWithMark(name))
        complaints += caption + u"の先頭には半角の「@」と「#」を使えません。\n"_s;
    if (std::any_of(name.begin(), name.end(), IsControl))
        complaints += caption + u"には改行やタブなどの制御文字を使えません。\n"_s;
    QString missing = Missing(name);
    missing.removeIf(IsControl);
    if (!missing.isEmpty())
        complaints +=
            caption + u"の次の文字は、一覧のファイルに保存できないため使えません："_s + missing.left(mostShown) + u'\n';
    return complaints;
}

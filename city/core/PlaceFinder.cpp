#include "city/core/PlaceFinder.h"

#include <algorithm>

namespace
{
constexpr char16_t Separator = u'\n';
constexpr char16_t HiraganaOffset = u'ァ' - u'ぁ';

/// Half-width katakana in the order of their codes, from U+FF65 on, as hiragana.
constexpr std::u16string_view HalfWidth = u"・をぁぃぅぇぉゃゅょっーあいうえおかきくけこさしすせそたちつてとなにぬねの"
                                          u"はひふへほまみむめもやゆよらりるれろわん";
constexpr char16_t HalfWidthFirst = u'･';
constexpr char16_t HalfWidthVoiced = u'ﾞ';
constexpr char16_t HalfWidthHalfVoiced = u'ﾟ';

/// The voiced form of a hiragana, the character itself when it has none.
char16_t Voiced(char16_t kana)
{
    if (kana == u'う')
        return u'ゔ';
    const bool isFirstRows = kana >= u'か' && kana <= u'ぢ' && (kana - u'か') % 2 == 0;
    const bool isLastOfTa = kana == u'つ' || kana == u'て' || kana == u'と';
    const bool isHa = kana >= u'は' && kana <= u'ほ' && (kana - u'は') % 3 == 0;
    return isFirstRows || isLastOfTa || isHa ? static_cast<char16_t>(kana + 1) : kana;
}

char16_t HalfVoiced(char16_t kana)
{
    const bool isHa = kana >= u'は' && kana <= u'ほ' && (kana - u'は') % 3 == 0;
    return isHa ? static_cast<char16_t>(kana + 2) : kana;
}

/// The comparison form of the characters that names are made of; 0 for one that takes the long way.
char16_t FoldedCharacter(char16_t c)
{
    if (c < 0x80)
        return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 0x20) : c;
    if ((c >= 0x3400 && c <= 0x9FFF) || (c >= u'ぁ' && c <= u'ゖ') || c == u'・' || c == u'ー')
        return c;
    if ((c >= u'ァ' && c <= u'ヶ') || c == u'ヽ' || c == u'ヾ')
        return static_cast<char16_t>(c - HiraganaOffset);
    if (c >= u'！' && c <= u'～')
        return FoldedCharacter(static_cast<char16_t>(c - u'！' + u'!'));
    if (c == u'〜') // two codes for the wave dash and the minus sign are about
        return u'~';
    if (c == u'−')
        return u'-';
    if (c == u'\u2014' || c == u'\u2015') // the same for the dash
        return u'\u2015';
    if (c == u'\u2016' || c == u'\u2225') // and the double bar
        return u'\u2225';
    if (c >= HalfWidthFirst && c < HalfWidthVoiced)
        return HalfWidth[static_cast<size_t>(c - HalfWidthFirst)];
    return c == u'　' ? u' ' : u'\0';
}

void AppendFolded(QString& out, QStringView text)
{
    const qsizetype start = out.size();
    for (const QChar character : text) {
        const char16_t c = character.unicode();
        if ((c == HalfWidthVoiced || c == HalfWidthHalfVoiced) && out.size() > start) {
            QChar& last = out.back();
            last = c == HalfWidthVoiced ? Voiced(last.unicode()) : HalfVoiced(last.unicode());
        } else if (const char16_t folded = FoldedCharacter(c))
            out += QChar(folded);
        else // letters with marks, enclosed numbers and the like
            out += QString(character).normalized(QString::NormalizationForm_KC).toCaseFolded();
    }
}
} // namespace

QString CPlaceFinder::Folded(QStringView text)
{
    QString folded;
    AppendFolded(folded, text.toString().normalized(QString::NormalizationForm_C));
    return folded;
}

void CPlaceFinder::SetTree(const CPlaceTree& tree)
{
    m_items.clear();
    m_names.clear();
    m_starts.clear();
    m_matches.clear();
    for (CPlaceItem* item = tree.Root(); item; item = item->Following()) {
        m_items.push_back(item);
        m_starts.push_back(m_names.size());
        AppendFolded(m_names, item->Text());
        m_names += Separator;
    }
}

void CPlaceFinder::Find(const QString& text)
{
    m_matches.clear();
    const QString wanted = Folded(text);
    if (wanted.isEmpty() || wanted.contains(Separator))
        return;
    const QStringView names(m_names);
    qsizetype at = names.indexOf(wanted);
    while (at >= 0) {
        const auto next = std::upper_bound(m_starts.begin(), m_starts.end(), at);
        m_matches.push_back(static_cast<int>(next - m_starts.begin()) - 1);
        if (next == m_starts.end())
            return;
        at = names.indexOf(wanted, *next); // one match of a name is enough
    }
}

int CPlaceFinder::PositionOf(const CPlaceItem* item) const
{
    const auto found = std::find(m_items.begin(), m_items.end(), item);
    return found == m_items.end() ? -1 : static_cast<int>(found - m_items.begin());
}

CPlaceItem* CPlaceFinder::Match(const CPlaceItem* from, Step step) const
{
    if (m_matches.empty())
        return nullptr;
    const int position = PositionOf(from);
    auto match = step == Step::Next ? std::upper_bound(m_matches.begin(), m_matches.end(), position)
                                    : std::lower_bound(m_matches.begin(), m_matches.end(), position);
    if (step == Step::Previous)
        match = match == m_matches.begin() ? std::prev(m_matches.end()) : std::prev(match);
    else if (match == m_matches.end())
        match = m_matches.begin();
    return m_items[static_cast<size_t>(*match)];
}

int CPlaceFinder::Ordinal(const CPlaceItem* item) const
{
    const int position = PositionOf(item);
    const auto match = std::lower_bound(m_matches.begin(), m_matches.end(), position);
    return match != m_matches.end() && *match == position ? static_cast<int>(match - m_matches.begin()) + 1 : 0;
}

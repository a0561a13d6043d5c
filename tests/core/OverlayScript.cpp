#include "OverlayScript.h"

using namespace Qt::StringLiterals;

namespace
{
const QHash<QString, QString> DataByLetter{{u"H"_s, u"135.2500000,34.5000000,12,09.00, 0, 1, 3"_s},
                                           {u"S"_s, u"135.3000000,34.6000000,5,09.00, 0, 1, 0"_s}};

/// The elements of a text, as JSON.
class CReader
{
public:
    explicit CReader(QString text) : m_text(std::move(text)) {}

    QString Elements()
    {
        QStringList elements;
        SkipBlanks();
        while (m_at < m_text.size() && m_text[m_at] != u')') {
            elements += QStringView(u"{[\"0123456789").contains(m_text[m_at]) ? Json() : Element();
            SkipBlanks();
            if (m_at < m_text.size() && m_text[m_at] == u',')
                ++m_at;
            SkipBlanks();
        }
        return elements.join(u',');
    }

private:
    QString Element()
    {
        const QString action = Word();
        SkipBlanks();
        const QString name = Word();
        QHash<char16_t, QString> parts;
        while (m_at < m_text.size() && QStringView(u"><=").contains(m_text[m_at])) {
            const char16_t mark = m_text[m_at++].unicode();
            parts[mark] = mark == u'=' && m_text.sliced(m_at).startsWith(u'"') ? Json().sliced(1).chopped(1) : Word();
        }
        QString next;
        if (m_at < m_text.size() && m_text[m_at] == u'(') {
            ++m_at;
            next = Elements();
            ++m_at;
        }
        const QString data = parts.value(u'=');
        return uR"({"action":"%1","data":"%2","latest_name":"%3","next":%4,"original_name":"%5","type":"%6",)"_s.arg(
                   action, DataByLetter.value(data, data), parts.value(u'>'),
                   action == u"delete"_s ? u"\"\""_s : u'[' + next + u']', name,
                   parts.contains(u'=') ? u"leaf"_s : u"node"_s) +
               uR"("vertical_offset":"%1"})"_s.arg(parts.value(u'<'));
    }

    QString Word()
    {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && !QStringView(u" ><=(),").contains(m_text[m_at]))
            ++m_at;
        return m_text.sliced(start, m_at - start);
    }

    /// To the end of the value that begins here.
    QString Json()
    {
        const qsizetype start = m_at;
        int depth = 0;
        bool isText = false;
        for (; m_at < m_text.size(); ++m_at) {
            const QChar c = m_text[m_at];
            if (c == u'"')
                isText = !isText;
            if (isText)
                continue;
            if (depth == 0 && QStringView(u" ,)").contains(c))
                break;
            depth += c == u'{' || c == u'[' ? 1 : c == u'}' || c == u']' ? -1 : 0;
        }
        return m_text.sliced(start, m_at - start);
    }

    void SkipBlanks()
    {
        while (m_at < m_text.size() && m_text[m_at] == u' ')
            ++m_at;
    }

    QString m_text;
    qsizetype m_at = 0;
};

void EditOnce(CPlacesInFolder& places, const QStringList& words)
{
    CPlaceDocument& document = places.Document();
    const QString& verb = words.front();
    if (verb == u"undo"_s) {
        document.Undo();
        return;
    }
    const auto at = [&places](const QString& path) {
        CPlaceItem* item = places.At(path == u"."_s ? QStringList() : path.split(u'/'));
        if (!item)
            throw std::invalid_argument(path.toStdString());
        return item;
    };
    CPlaceItem* item = at(words[1]);
    const auto where = [](CPlaceItem* to) {
        return to->IsFolder() ? std::pair<CPlaceItem*, CPlaceItem*>(to, nullptr) : std::pair(to->Parent(), to);
    };
    if (verb == u"delete"_s) {
        document.Delete(item);
    } else if (verb == u"move"_s) {
        const auto [parent, after] = where(at(words[2]));
        document.Move(item, parent, after);
    } else if (verb == u"rename"_s && item->IsFolder()) {
        document.UpdateFolder(item, words[2]);
    } else if (verb == u"rename"_s) {
        CCityList values = document.Place(item->Data());
        values.IsUserEdited = 1;
        document.UpdatePlace(item, words[2], values);
    } else if (verb == u"value"_s) {
        document.UpdatePlace(item, words[2], Values(words[3].toDouble(), 2, 3, 4));
    } else {
        const auto [parent, after] = where(item);
        if (verb == u"add"_s)
            document.AddPlace(parent, after, words[2], Values(135.3, 34.6, 5, 0));
        else if (verb == u"folder"_s)
            document.AddFolder(parent, after, words[2]);
        else
            throw std::invalid_argument(verb.toStdString());
    }
}
} // namespace

QByteArray OverlayScript::Document(const QString& elements)
{
    QString root =
        uR"([{"action":"path","data":"","latest_name":"","next":[%1],"original_name":"場所","type":"node",)"_s;
    root += u"\"vertical_offset\":\"\"}]"_s;
    root.replace(u"%1"_s, CReader(elements).Elements());
    QByteArray document;
    for (const QChar c : root) // a second byte may be one that JSON escapes
        document += c.unicode() < 0x80 ? QByteArray(1, c.toLatin1())
                                       : CodePage932::Encode(QStringView(&c, 1)).replace('\\', "\\\\");
    return document;
}

void OverlayScript::Edit(CPlacesInFolder& places, const QString& edits)
{
    for (const QString& edit : edits.split(u';', Qt::SkipEmptyParts))
        EditOnce(places, edit.split(u' ', Qt::SkipEmptyParts));
}

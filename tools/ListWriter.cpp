#include "tools/ListWriter.h"

#include "host/text/CodePage932.h"

bool CListWriter::IsName(const QString& name)
{
    if (name.isEmpty() || name != name.trimmed() || PlaceListFormat::BeginsWithMark(name)) {
        return false;
    }
    for (const QChar c : name) {
        if (c == u',' || c.category() == QChar::Other_Control) {
            return false;
        }
    }
    return CodePage932::IsRepresentable(name) && CodePage932::Encode(name).size() <= PlaceListFormat::NameWidth;
}

void CListWriter::Comment(const QString& text)
{
    m_bytes += PlaceListFormat::CloseMark + CodePage932::Encode(text) + "\r\n";
}

void CListWriter::OpenFolder(const QString& name)
{
    ++m_depth;
    ++m_folderCount;
    PlaceListFormat::AppendFolder(m_bytes, m_depth, name);
}

void CListWriter::CloseFolder()
{
    --m_depth;
    PlaceListFormat::AppendClose(m_bytes);
}

void CListWriter::Place(const PlaceValues& place)
{
    ++m_placeCount;
    PlaceListFormat::AppendPlace(m_bytes, place.Name, place);
}

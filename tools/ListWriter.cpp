#include "tools/ListWriter.h"

#include "host/text/CodePage932.h"
#include "host/text/Number.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
constexpr qsizetype NameWidth = 40;
}

bool CListWriter::IsName(const QString& name)
{
    if (name.isEmpty() || name != name.trimmed() || name.startsWith(u'@') || name.startsWith(u'#')) {
        return false;
    }
    for (const QChar c : name) {
        if (c == u',' || c.category() == QChar::Other_Control) {
            return false;
        }
    }
    return CodePage932::IsRepresentable(name) && CodePage932::Encode(name).size() <= NameWidth;
}

void CListWriter::Comment(const QString& text)
{
    m_bytes += '#' + CodePage932::Encode(text) + "\r\n";
}

void CListWriter::OpenFolder(const QString& name)
{
    ++m_depth;
    ++m_folderCount;
    m_bytes += QByteArray(m_depth, '@') + CodePage932::Encode(name) + "\r\n";
}

void CListWriter::CloseFolder()
{
    --m_depth;
    m_bytes += "#\r\n";
}

void CListWriter::Place(const ListPlace& place)
{
    ++m_placeCount;
    m_bytes += CodePage932::Encode(place.Name).leftJustified(NameWidth, ' ');
    m_bytes += Number::Format(",%11.7f%c,%10.7f%c,%7d,%c%05.2f,%2d,%2d,%2d\r\n", std::abs(place.Longitude),
                              place.Longitude < 0.0 ? 'W' : 'E', std::abs(place.Latitude),
                              place.Latitude < 0.0 ? 'S' : 'N', place.Altitude, place.TimeZone < 0.0 ? '-' : '+',
                              std::abs(place.TimeZone), place.IsAutoAltitude ? 1 : 0, 0, place.Kind)
                   .toLatin1();
}

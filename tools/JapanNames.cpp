#include "tools/JapanNames.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cstdint>
#include <iconv.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{
QString DecodeEuc(QByteArray bytes)
{
    const iconv_t converter = iconv_open("UTF-8", "EUC-JISX0213");
    if (reinterpret_cast<std::intptr_t>(converter) == -1) {
        throw std::runtime_error("no converter for EUC-JISX0213");
    }
    QByteArray utf8(bytes.size() * 3, '\0');
    char* in = bytes.data();
    char* out = utf8.data();
    auto inLeft = static_cast<size_t>(bytes.size());
    auto outLeft = static_cast<size_t>(utf8.size());
    const bool isWhole = iconv(converter, &in, &inLeft, &out, &outLeft) != static_cast<size_t>(-1);
    iconv_close(converter);
    if (!isWhole) {
        throw std::runtime_error("the postal-code dictionary is not in EUC-JISX0213");
    }
    utf8.chop(static_cast<qsizetype>(outLeft));
    return QString::fromUtf8(utf8);
}
} // namespace

CJapanNames::CJapanNames(const QString& dictionaryPath)
{
    QFile file(dictionaryPath);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read " + dictionaryPath.toStdString());
    }
    static const QRegularExpression entry(u"^\\d{7} /(.+)/$"_s);
    static const QRegularExpression split(u"^(北海道|東京都|京都府|大阪府|.{2,3}県)(.+)$"_s);
    QHash<QString, QStringList> addresses;
    for (const QString& line : DecodeEuc(file.readAll()).split(u'\n')) {
        const QRegularExpressionMatch match = entry.match(line);
        if (!match.hasMatch()) {
            continue;
        }
        for (const QString& address : match.captured(1).split(u'/')) {
            const QRegularExpressionMatch parts = split.match(address);
            if (parts.hasMatch()) {
                addresses[parts.captured(1)].append(parts.captured(2));
            }
        }
    }
    for (auto it = addresses.cbegin(); it != addresses.cend(); ++it) {
        AddPrefecture(it.key(), it.value());
    }
}

void CJapanNames::AddPrefecture(const QString& prefecture, QStringList addresses)
{
    // Each municipality has an entry of its own ("places not listed below"), and all its districts begin with it: the
    // addresses that no other address is the beginning of are the municipalities.
    static const QRegularExpression ward(u"^(.{1,5}市)(.{1,5}区)$"_s);
    static const QRegularExpression district(u"^(?:.{1,4}?郡|三宅島|八丈島)(.+[町村])$"_s);
    static const QRegularExpression suffix(u"[市町村区]$"_s);
    QHash<QString, QString>& names = m_municipalities[prefecture];
    addresses.sort();
    m_addresses.insert(prefecture, addresses);
    QString last;
    for (const QString& address : addresses) {
        if (!last.isEmpty() && address.startsWith(last)) {
            continue;
        }
        last = address;
        if (const QRegularExpressionMatch match = ward.match(address); match.hasMatch()) {
            names.insert(match.captured(1), match.captured(1));
        } else if (const QRegularExpressionMatch rural = district.match(address); rural.hasMatch()) {
            names.insert(rural.captured(1), address);
        } else if (suffix.match(address).hasMatch()) {
            names.insert(address, address);
        }
    }
}

QString CJapanNames::Official(const QString& prefecture, const QString& name) const
{
    const auto found = m_municipalities.constFind(prefecture);
    if (found == m_municipalities.cend()) {
        return {};
    }
    for (const QString& candidate :
         {name, QString(name + u'市'), QString(name + u'区'), QString(name + u'町'), QString(name + u'村')}) {
        if (found->contains(candidate)) {
            return candidate;
        }
    }
    return {};
}

QString CJapanNames::InAddress(const QString& prefecture, const QString& municipality) const
{
    return m_municipalities.value(prefecture).value(municipality);
}

QString CJapanNames::TownAddress(const QString& prefecture, const QString& municipality, const QString& town) const
{
    const QString begin = InAddress(prefecture, municipality);
    const auto addresses = m_addresses.constFind(prefecture);
    if (begin.isEmpty() || addresses == m_addresses.cend()) {
        return {};
    }
    static const QRegularExpression ward(u"^.{1,5}区$"_s);
    QString found;
    for (auto it = std::lower_bound(addresses->cbegin(), addresses->cend(), begin);
         it != addresses->cend() && it->startsWith(begin); ++it) {
        const QString rest = it->mid(begin.size());
        if (!rest.endsWith(town) || *it == found) {
            continue;
        }
        const QString between = rest.chopped(town.size());
        if (!between.isEmpty() && !ward.match(between).hasMatch()) {
            continue;
        }
        if (!found.isEmpty()) {
            return {};
        }
        found = *it;
    }
    return found;
}

qsizetype CJapanNames::Count() const
{
    qsizetype count = 0;
    for (const auto& names : m_municipalities) {
        count += names.size();
    }
    return count;
}

#include "host/system/ComponentStore.h"

#include "host/system/HostContext.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
constexpr qint64 MaxFileSize = 4 << 20;
constexpr int MaxDepth = 64;
constexpr std::size_t MaxValues = 256; // of a key; they are looked up one by one

const QString KeyElement = u"key"_s;
const QString ValueElement = u"value"_s;
const QString NameAttribute = u"name"_s;
const QString TypeAttribute = u"type"_s;

// In the order of CComponentStore::ValueType.
constexpr std::array<const char16_t*, 4> TypeNames{u"string", u"expandable", u"multi-string", u"number"};

const QString& FilePath()
{
    return CHostContext::Current().ComponentsFile();
}

QString RootName(CComponentStore::Root root)
{
    return root == CComponentStore::Root::Classes ? u"HKEY_CLASSES_ROOT"_s : u"HKEY_LOCAL_MACHINE"_s;
}

QString TypeName(CComponentStore::ValueType type)
{
    return QString::fromUtf16(TypeNames.at(static_cast<std::size_t>(type)));
}

std::optional<CComponentStore::ValueType> TypeOfName(QStringView name)
{
    if (name.isEmpty())
        return CComponentStore::ValueType::String;
    for (std::size_t i = 0; i < TypeNames.size(); ++i) {
        if (name == QStringView(TypeNames.at(i)))
            return static_cast<CComponentStore::ValueType>(i);
    }
    return std::nullopt;
}
} // namespace

CComponentStore::Enumerated CComponentStore::Key::EnumKey(qsizetype index, QString* name, qsizetype* length) const
{
    if (index < 0 || static_cast<std::size_t>(index) >= m_keys.size())
        return Enumerated::NoMore;
    const QString& found = m_keys[static_cast<std::size_t>(index)].m_name;
    const bool isFitting = found.size() <= *length;
    *length = found.size();
    if (!isFitting)
        return Enumerated::TooLong;
    *name = found;
    return Enumerated::Read;
}

std::optional<CComponentStore::Value> CComponentStore::Key::QueryValue(const QString& name) const
{
    for (const auto& [known, value] : m_values) {
        if (known.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return std::nullopt;
}

const CComponentStore::Key* CComponentStore::Key::Find(const QString& name) const
{
    const auto found = m_indices.constFind(name.toCaseFolded());
    return found == m_indices.constEnd() ? nullptr : &m_keys[*found];
}

CComponentStore::Key& CComponentStore::Key::FindOrAdd(const QString& name)
{
    const QString folded = name.toCaseFolded();
    const auto found = m_indices.constFind(folded);
    if (found != m_indices.constEnd())
        return m_keys[*found];
    m_indices.insert(folded, m_keys.size());
    Key& added = m_keys.emplace_back();
    added.m_name = name;
    return added;
}

void CComponentStore::Key::ReadContent(QXmlStreamReader& xml, int depth)
{
    while (xml.readNextStartElement()) {
        const QString name = xml.attributes().value(NameAttribute).toString();
        if (xml.name() == KeyElement && !name.isEmpty() && depth < MaxDepth) {
            FindOrAdd(name).ReadContent(xml, depth + 1);
            continue;
        }
        const auto type = TypeOfName(xml.attributes().value(TypeAttribute));
        if (xml.name() != ValueElement || !type || m_values.size() >= MaxValues || QueryValue(name)) {
            xml.skipCurrentElement();
            continue;
        }
        QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
        if (*type == ValueType::MultiString)
            text = text.replace(u'\n', QChar(u'\0')) + QChar(u'\0');
        if (!xml.hasError())
            m_values.emplace_back(name, Value{*type, text});
    }
}

void CComponentStore::Key::WriteContent(QXmlStreamWriter& xml) const
{
    for (const auto& [name, value] : m_values) {
        xml.writeStartElement(ValueElement);
        if (!name.isEmpty())
            xml.writeAttribute(NameAttribute, name);
        xml.writeAttribute(TypeAttribute, TypeName(value.Type));
        QString text = value.Text;
        if (text.endsWith(QChar(u'\0')))
            text.chop(1);
        xml.writeCharacters(text.replace(QChar(u'\0'), u'\n'));
        xml.writeEndElement();
    }
    for (const Key& key : m_keys) {
        xml.writeStartElement(KeyElement);
        xml.writeAttribute(NameAttribute, key.m_name);
        key.WriteContent(xml);
        xml.writeEndElement();
    }
}

CComponentStore::CComponentStore()
{
    QFile file(FilePath());
    // Asked for before opening: what is no plain file could keep its reader waiting for ever.
    if (!QFileInfo(file).isFile() || file.size() > MaxFileSize || !file.open(QIODevice::ReadOnly))
        return;
    QXmlStreamReader xml(&file);
    if (xml.readNextStartElement())
        m_top.ReadContent(xml, 0);
}

const CComponentStore::Key* CComponentStore::OpenKey(Root root, QStringView path) const
{
    const Key* key = m_top.Find(RootName(root));
    for (const QStringView part : path.split(u'\\', Qt::SkipEmptyParts)) {
        if (!key)
            break;
        key = key->Find(part.toString());
    }
    return key;
}

void CComponentStore::SetValue(Root root, QStringView path, const QString& name, const Value& value)
{
    Key* key = &m_top.FindOrAdd(RootName(root));
    for (const QStringView part : path.split(u'\\', Qt::SkipEmptyParts))
        key = &key->FindOrAdd(part.toString());
    const auto known = std::find_if(key->m_values.begin(), key->m_values.end(), [&name](const auto& entry) {
        return entry.first.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (known != key->m_values.end())
        known->second = value;
    else
        key->m_values.emplace_back(name, value);
}

bool CComponentStore::Save() const
{
    QDir().mkpath(QFileInfo(FilePath()).absolutePath());
    QSaveFile file(FilePath());
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(u"components"_s);
    m_top.WriteContent(xml);
    xml.writeEndDocument();
    return !xml.hasError() && file.commit();
}

#include "host/system/Registry.h"

#include "host/system/HostContext.h"

using namespace Qt::StringLiterals;

namespace
{
CSettingsFile& Settings()
{
    return CHostContext::Current().Settings();
}

QString Key(QString section, const QString& name)
{
    if (section == u"General"_s)
        return name; // the store's own section of that name; as a prefix it would become one called "%General"
    return section.replace(u'\\', u'/') + u'/' + name;
}
} // namespace

void CRegistry::Read(const QString& section, const QString& name, int defaultValue, int* result, int /*kind*/)
{
    bool isInteger = false;
    // By way of the text: the store's own conversion wraps a number too large for an int.
    const int value = Settings().Value(Key(section, name)).toString().toInt(&isInteger);
    *result = isInteger ? value : defaultValue;
}

void CRegistry::Read(const QString& section, const QString& name, const QString& defaultValue, QString* result)
{
    const QVariant value = Settings().Value(Key(section, name));
    if (value.typeId() == QMetaType::QStringList)
        *result = value.toStringList().join(u", "_s); // an unquoted text with commas, as a person writes it
    else
        *result = value.canConvert<QString>() && value.isValid() ? value.toString() : defaultValue;
}

void CRegistry::Write(const QString& section, const QString& name, int data, int /*kind*/)
{
    Settings().SetValue(Key(section, name), data);
}

void CRegistry::Write(const QString& section, const QString& name, const QString& data)
{
    Settings().SetValue(Key(section, name), data);
}

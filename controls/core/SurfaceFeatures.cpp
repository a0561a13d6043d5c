#include "controls/core/SurfaceFeatures.h"

#include "controls/core/Statement.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace
{
constexpr qint64 MaximumFileSize = 8 << 20;
constexpr qsizetype MaximumNames = 50'000;
constexpr qsizetype MaximumNameLength = 64;
} // namespace

QList<SurfaceFeature> SurfaceFeature::Read(const QString& file)
{
    QList<SurfaceFeature> features;
    QFile source(file);
    if (!QFileInfo(file).isFile() || !source.open(QIODevice::ReadOnly))
        return features;
    const QString text = QString::fromUtf8(source.read(MaximumFileSize));
    for (const QStringView line : QStringView(text).split(u'\n')) {
        const QList<QStringView> fields = line.trimmed().split(u',');
        if (fields.size() < 4 || fields[0].trimmed().isEmpty() || features.size() == MaximumNames)
            continue;
        const auto longitude = StatementReader::ReadNumber(fields[1]);
        const auto latitude = StatementReader::ReadNumber(fields[2]);
        const auto size = StatementReader::ReadNumber(fields[3]);
        if (longitude && latitude && size)
            features.append(
                {fields[0].trimmed().left(MaximumNameLength).toString(), ToVector({*longitude, *latitude}), *size});
    }
    std::stable_sort(features.begin(), features.end(),
                     [](const SurfaceFeature& a, const SurfaceFeature& b) { return a.Size > b.Size; });
    return features;
}

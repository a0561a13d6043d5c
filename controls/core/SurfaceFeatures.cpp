#include "controls/core/SurfaceFeatures.h"

#include "controls/core/Statement.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <optional>

namespace
{
constexpr qint64 MaximumFileSize = 8 << 20;
constexpr qsizetype MaximumNames = 50'000;
constexpr qsizetype MaximumNameLength = 64;

std::optional<SurfaceFeature> ReadLine(QStringView line)
{
    const QList<QStringView> fields = line.trimmed().split(u',');
    if (fields.size() < 4 || fields[0].trimmed().isEmpty())
        return std::nullopt;
    const auto longitude = StatementReader::ReadNumber(fields[1]);
    const auto latitude = StatementReader::ReadNumber(fields[2]);
    const auto size = StatementReader::ReadNumber(fields[3]);
    if (!longitude || !latitude || !size || std::abs(*longitude) > 360 || std::abs(*latitude) > 90 || *size < 0)
        return std::nullopt;
    return SurfaceFeature{fields[0].trimmed().left(MaximumNameLength).toString(), ToVector({*longitude, *latitude}),
                          *size};
}
} // namespace

QList<SurfaceFeature> SurfaceFeature::Read(const QString& file)
{
    QList<SurfaceFeature> features;
    QFile source(file);
    if (!QFileInfo(file).isFile() || !source.open(QIODevice::ReadOnly))
        return features;
    const QString text = QString::fromUtf8(source.read(MaximumFileSize));
    int lineNumber = 0;
    int firstBad = 0;
    int badCount = 0;
    for (const QStringView line : QStringView(text).split(u'\n')) {
        ++lineNumber;
        if (line.trimmed().isEmpty() || features.size() == MaximumNames)
            continue;
        if (const auto feature = ReadLine(line))
            features.append(*feature);
        else if (++badCount == 1)
            firstBad = lineNumber;
    }
    if (badCount > 0)
        qWarning("%s: %d lines are left out, the first is line %d", qUtf8Printable(QDir::toNativeSeparators(file)),
                 badCount, firstBad);
    std::stable_sort(features.begin(), features.end(),
                     [](const SurfaceFeature& a, const SurfaceFeature& b) { return a.Size > b.Size; });
    return features;
}

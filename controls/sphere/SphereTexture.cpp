#include "controls/sphere/SphereTexture.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImageReader>
#include <QString>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace
{
constexpr int SmallestWidth = 128;
constexpr int LargestSide = 16384;
constexpr qint64 LargestFile = 64 << 20;

QHash<QString, std::weak_ptr<const CSphereTexture>>& Held()
{
    static QHash<QString, std::weak_ptr<const CSphereTexture>> held;
    return held;
}
/// Why the bytes are no map of a surface, or the map in `picture`.
const char* Decode(QByteArray& bytes, QImage& picture)
{
    if (bytes.size() > LargestFile)
        return "too large";
    // The reader of this format fills up with grey what a cut file lacks.
    if (bytes.startsWith("\xFF\xD8") && !bytes.trimmed().endsWith("\xFF\xD9"))
        return "cut";
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (size.isEmpty())
        return "no picture";
    if (size.width() > LargestSide || size.width() != 2 * size.height())
        return "not a map of the whole surface, twice as wide as high";
    picture = reader.read();
    return picture.isNull() ? "damaged" : nullptr;
}

/// The same picture; a large one in large pages of memory where the system has them. What lies side by side on a globe
/// may lie many rows apart here: with small pages each texel would have to be looked up in the table of pages first.
QImage InLargePages(const QImage& picture)
{
#ifdef MADV_HUGEPAGE
    constexpr std::size_t page = 2 << 20;
    const auto size = (static_cast<std::size_t>(picture.sizeInBytes()) + page - 1) / page * page;
    void* const memory = picture.sizeInBytes() < qsizetype(page) / 2 ? nullptr : std::aligned_alloc(page, size);
    if (memory) {
        static_cast<void>(madvise(memory, size, MADV_HUGEPAGE)); // without them it is slower, no more
        std::memcpy(memory, picture.constBits(), static_cast<std::size_t>(picture.sizeInBytes()));
        return {static_cast<const uchar*>(memory),
                picture.width(),
                picture.height(),
                picture.bytesPerLine(),
                picture.format(),
                std::free,
                memory};
    }
#endif
    return picture;
}
} // namespace

CSphereTexture::CSphereTexture(const QImage& equirectangular)
    : m_levels(1, equirectangular.convertToFormat(QImage::Format_RGB32))
{
    while (m_levels.back().width() > SmallestWidth && m_levels.back().height() > 1) {
        const QImage& last = m_levels.back();
        m_levels.push_back(last.scaled(last.width() / 2, std::max(1, last.height() / 2), Qt::IgnoreAspectRatio,
                                       Qt::SmoothTransformation)
                               .convertToFormat(QImage::Format_RGB32));
    }
    for (QImage& level : m_levels)
        level = InLargePages(level);
}

std::shared_ptr<const CSphereTexture> CSphereTexture::Shared(const QString& name, const std::function<QImage()>& load)
{
    Held().removeIf([](const auto& item) { return item.value().expired(); });
    if (const auto held = Held().value(name).lock())
        return held;
    const QImage picture = load();
    if (picture.isNull())
        return nullptr;
    auto texture = std::make_shared<const CSphereTexture>(picture);
    Held().insert(name, texture);
    return texture;
}

QImage CSphereTexture::ReadPicture(const QString& file)
{
    QImage picture;
    QFile source(file);
    if (!QFileInfo(file).isFile() || !source.open(QIODevice::ReadOnly))
        return picture;
    QByteArray bytes = source.read(LargestFile + 1);
    if (const char* why = Decode(bytes, picture)) {
        qWarning("%s is left out: %s", qUtf8Printable(QDir::toNativeSeparators(file)), why);
        return {};
    }
    return picture;
}

qsizetype CSphereTexture::SharedBytes()
{
    qsizetype bytes = 0;
    for (const auto& held : std::as_const(Held())) {
        if (const auto texture = held.lock()) {
            for (const QImage& level : texture->m_levels)
                bytes += level.sizeInBytes();
        }
    }
    return bytes;
}

const QImage& CSphereTexture::ForWidth(double width) const
{
    const auto narrower =
        std::find_if(m_levels.begin(), m_levels.end(), [width](const QImage& level) { return level.width() < width; });
    return narrower == m_levels.begin() ? m_levels.front() : *std::prev(narrower);
}

#pragma once

#include <QImage>

#include <functional>
#include <memory>
#include <vector>

class QString;

/// The surface of a body as a picture in several sizes, so that a small disc does not sparkle.
class CSphereTexture
{
public:
    /// The whole surface: longitude -180 at the left to 180 at the right, latitude 90 at the top to -90 at the bottom.
    /// Not null.
    explicit CSphereTexture(const QImage& equirectangular);

    /// The texture of that name: the one that somebody holds already, or a new one of the picture that `load` returns,
    /// none when that is null. It lives as long as it is held. For the thread of the windows only.
    [[nodiscard]] static std::shared_ptr<const CSphereTexture> Shared(const QString& name,
                                                                      const std::function<QImage()>& load);
    /// Reads a map of a whole surface, twice as wide as high. Null when there is none; one that is cut, damaged, larger
    /// than 16384 pixels to a side or 64 MiB, or of another shape is left out, too, with a warning.
    [[nodiscard]] static QImage ReadPicture(const QString& file);

    /// Bytes of all pictures that are held by such names.
    [[nodiscard]] static qsizetype SharedBytes();

    /// The smallest picture that is at least so wide (pixels), or the largest that there is.
    [[nodiscard]] const QImage& ForWidth(double width) const;

private:
    std::vector<QImage> m_levels; ///< the picture itself, then each half as wide as the one before
};

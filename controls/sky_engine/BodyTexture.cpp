#include "controls/sky_engine/BodyTexture.h"

#include "controls/core/EngineBody.h"

#include <QColor>
#include <QDir>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{
constexpr int Width = 768;
constexpr int Height = 384;

/// Quicker than std::lerp, whose exactness at the ends no colour needs.
float Mix(float a, float b, float share)
{
    return a + (b - a) * share;
}

/// Smooth noise in space, so that the picture has no seam and no pinched pole; -1 to 1.
class CNoise
{
public:
    explicit CNoise(unsigned seed) : m_seed(seed) {}

    [[nodiscard]] float Sum(const UnitVector& at, float frequency, int octaves) const
    {
        float sum = 0.0F;
        float weight = 0.5F;
        for (int i = 0; i < octaves; ++i, frequency *= 2.0F, weight *= 0.5F)
            sum += weight * At(static_cast<float>(at.X) * frequency, static_cast<float>(at.Y) * frequency,
                               static_cast<float>(at.Z) * frequency);
        return sum;
    }

private:
    [[nodiscard]] float Lattice(int x, int y, int z) const
    {
        unsigned h = m_seed + static_cast<unsigned>(x) * 374761393U + static_cast<unsigned>(y) * 668265263U +
                     static_cast<unsigned>(z) * 2147483647U;
        h = (h ^ (h >> 13U)) * 1274126177U;
        h ^= h >> 16U;
        return static_cast<float>(h & 0xFFFFU) / 32767.5F - 1.0F;
    }

    [[nodiscard]] float At(float x, float y, float z) const
    {
        const auto floor = [](float value) { return static_cast<int>(value) - (value < 0.0F ? 1 : 0); };
        const auto smooth = [](float t) { return t * t * (3.0F - 2.0F * t); };
        const int ix = floor(x);
        const int iy = floor(y);
        const int iz = floor(z);
        const float sx = smooth(x - static_cast<float>(ix));
        const float sy = smooth(y - static_cast<float>(iy));
        const float sz = smooth(z - static_cast<float>(iz));
        const auto row = [&](int dy, int dz) {
            return Mix(Lattice(ix, iy + dy, iz + dz), Lattice(ix + 1, iy + dy, iz + dz), sx);
        };
        return Mix(Mix(row(0, 0), row(1, 0), sy), Mix(row(0, 1), row(1, 1), sy), sz);
    }

    unsigned m_seed;
};

/// A light value for each pixel of the surface, around 0.
using Relief = std::vector<float>;

/// Belts and zones by latitude, their edges curled by the winds.
float CloudLight(const UnitVector& at, const CNoise& noise, float contrast)
{
    const float curl = noise.Sum({at.X, at.Y, at.Z * 4.0}, 3.0F, 4) * 0.035F;
    const float height = static_cast<float>(at.Z) + curl * (1.0F - static_cast<float>(at.Z * at.Z));
    const float bands = noise.Sum({0.37, 0.61, height}, 4.5F, 5) * 1.6F;
    const float streaks = noise.Sum({at.X, at.Y, height * 9.0}, 5.0F, 3) * 0.18F;
    return (bands + streaks) * contrast;
}

/// Ice round both poles, its edge ragged; the northern cap is the larger one.
float PolarCap(const UnitVector& at, const CNoise& noise)
{
    const float height = static_cast<float>(at.Z > 0.0 ? at.Z : -at.Z - 0.008);
    return std::clamp((height + noise.Sum(at, 9.0F, 3) * 0.012F - 0.982F) * 120.0F, 0.0F, 1.0F) * 0.9F;
}

Relief MakeRelief(const EngineBody& body, unsigned seed)
{
    Relief relief(static_cast<std::size_t>(Width) * Height);
    const CNoise noise(seed);
    // The deeper a giant's colour, the stronger its belts.
    const float contrast = 1.1F * static_cast<float>(QColor(body.Color).hslSaturationF());
    for (int y = 0; y < Height; ++y) {
        const double latitude = 90.0 - (y + 0.5) * 180.0 / Height;
        for (int x = 0; x < Width; ++x) {
            const UnitVector at = ToVector({(x + 0.5) * 360.0 / Width - 180.0, latitude});
            float& light = relief[static_cast<std::size_t>(y) * Width + static_cast<std::size_t>(x)];
            switch (body.Look) {
            case BodyLook::Star:
                light = noise.Sum(at, 60.0F, 2) * 0.16F + noise.Sum(at, 6.0F, 2) * 0.05F;
                break;
            case BodyLook::Clouds:
                light = CloudLight(at, noise, contrast);
                break;
            case BodyLook::Haze:
                light = CloudLight(at, noise, 0.3F);
                break;
            case BodyLook::Rock:
                light = noise.Sum(at, 2.2F, 6) * 0.35F;
                break;
            case BodyLook::Desert:
                light = noise.Sum(at, 1.8F, 6) * 0.42F + PolarCap(at, noise);
                break;
            case BodyLook::Ice:
                light = noise.Sum(at, 1.6F, 6) * 0.38F;
                break;
            }
        }
    }
    return relief;
}

QImage Paint(const EngineBody& body, unsigned seed)
{
    const Relief relief = MakeRelief(body, seed);
    const QColor base(body.Color);
    // Light parts go towards a pale shade; the dark belts of a giant are redder than the rest.
    const float warmth = body.Look == BodyLook::Clouds ? 0.25F : 0.05F;
    const auto channel = [](int value, float light, float depth) {
        const auto v = static_cast<float>(value);
        const float shaded =
            light < 0.0F ? v * (1.0F + light * depth) : Mix(v, 130.0F + v * 0.49F, std::min(light, 0.8F));
        return std::clamp(static_cast<int>(shaded), 0, 255);
    };
    QImage picture(Width, Height, QImage::Format_RGB32);
    for (int y = 0; y < Height; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < Width; ++x) {
            const float light = relief[static_cast<std::size_t>(y) * Width + static_cast<std::size_t>(x)];
            line[x] = qRgb(channel(base.red(), light, 1.0F - warmth), channel(base.green(), light, 1.0F),
                           channel(base.blue(), light, 1.0F + warmth));
        }
    }
    return picture;
}
} // namespace

std::shared_ptr<const CSphereTexture> BodyTexture::Load(int body, const QString& dataFolder)
{
    const EngineBody& look = EngineBodies::Of(body);
    const QString folder = QString::fromUtf16(look.Folder);
    if (!dataFolder.isEmpty()) {
        const QString file = QDir::cleanPath(dataFolder + u'/' + folder + u"/relief.jpg"_s);
        if (auto texture = CSphereTexture::Shared(file, [&] { return CSphereTexture::ReadPicture(file); }))
            return texture;
    }
    return CSphereTexture::Shared(folder, [&] { return Paint(look, 977U * static_cast<unsigned>(body) + 31U); });
}

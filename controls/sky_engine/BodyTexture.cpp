#include "controls/sky_engine/BodyTexture.h"

#include "controls/sky_engine/EngineBody.h"

#include <QColor>
#include <QImageReader>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{
constexpr int Width = 768;
constexpr int Height = 384;
constexpr int MaximumPictureWidth = 8192;

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

/// Presses craters of all sizes into a relief: a dark floor, a bright rim.
void AddCraters(Relief& relief, unsigned seed, int count)
{
    std::mt19937 random(seed);
    const auto share = [&random] { return static_cast<double>(random() & 0xFFFFFFU) / 0x1000000; };
    for (int i = 0; i < count; ++i) {
        const double latitude = std::asin(2.0 * share() - 1.0);
        const double column = share() * Width;
        const double radius = 1.7 / std::pow(share() + 0.006, 0.62); // pixels on the equator; few are large
        const double stretch = 1.0 / std::max(std::cos(latitude), 0.05);
        const double row = (0.5 - latitude / std::numbers::pi) * Height;
        const double strength = 0.16 + 0.16 * share();
        for (int y = static_cast<int>(row - radius * 1.3); y <= row + radius * 1.3; ++y) {
            if (y < 0 || y >= Height)
                continue;
            const double reach = std::min(radius * 1.3 * stretch, Width / 2.0);
            for (int x = static_cast<int>(column - reach); x <= column + reach; ++x) {
                const double distance = std::hypot((x - column) / stretch, y - row) / radius;
                if (distance > 1.3)
                    continue;
                const double rim = std::exp(-std::pow((distance - 0.95) * 6.0, 2.0));
                const double floor = distance < 0.9 ? -0.55 : 0.0;
                const auto index = static_cast<std::size_t>(y) * Width + static_cast<std::size_t>((x + Width) % Width);
                relief[index] += static_cast<float>(strength * (rim * 0.8 + floor));
            }
        }
    }
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
                light = CloudLight(at, noise, 0.12F);
                break;
            case BodyLook::Rock:
                light = noise.Sum(at, 2.2F, 6) * 0.35F;
                break;
            case BodyLook::Ice:
                light = noise.Sum(at, 1.6F, 6) * 0.24F;
                break;
            }
        }
    }
    if (body.Look == BodyLook::Rock)
        AddCraters(relief, seed, 1600);
    return relief;
}

QImage Paint(const EngineBody& body, unsigned seed)
{
    const Relief relief = MakeRelief(body, seed);
    const QColor base(body.Color);
    // Light parts go towards a pale shade, dark parts keep more of the colour's warmth.
    const auto channel = [](int value, float light, float warmth) {
        const auto v = static_cast<float>(value);
        const float shaded =
            light < 0.0F ? v * (1.0F + light * warmth) : Mix(v, 130.0F + v * 0.49F, std::min(light, 0.8F));
        return std::clamp(static_cast<int>(shaded), 0, 255);
    };
    QImage picture(Width, Height, QImage::Format_RGB32);
    for (int y = 0; y < Height; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < Width; ++x) {
            const float light = relief[static_cast<std::size_t>(y) * Width + static_cast<std::size_t>(x)];
            line[x] = qRgb(channel(base.red(), light, 0.8F), channel(base.green(), light, 1.1F),
                           channel(base.blue(), light, 1.35F));
        }
    }
    return picture;
}
} // namespace

QImage BodyTexture::Load(std::size_t body, const QString& dataFolder)
{
    const EngineBody& look = EngineBodies::All()[body];
    if (!dataFolder.isEmpty()) {
        QImageReader reader(dataFolder + u'/' + QString::fromUtf16(look.Folder) + u"/relief.jpg"_s);
        const QSize size = reader.size();
        if (size.isValid() && size.width() <= MaximumPictureWidth && size.height() <= MaximumPictureWidth) {
            QImage picture = reader.read();
            if (!picture.isNull())
                return picture;
        }
    }
    return Paint(look, 977U * static_cast<unsigned>(body) + 31U);
}

#include "controls/sphere/SphereRenderer.h"

#include "controls/sphere/RowCrew.h"
#include "controls/sphere/TextureSampler.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr float Pi = std::numbers::pi_v<float>;
constexpr int BandHeight = 512;
// Pixels of a row that are drawn in even steps: at most two to this power, fewer where the sphere is less flat.
constexpr int LargestBlockBits = 5;
// Width of the glow outside the disc and how quickly it fades, in radii.
constexpr float GlowWidth = 0.03F;

// Four numbers that are computed at once; what is written for one number serves for them, too.
using Floats = float __attribute__((vector_size(16)));
using Ints = int __attribute__((vector_size(16)));

template <typename T> T Larger(T a, T b)
{
    return a < b ? b : a;
}

template <typename T> T Smaller(T a, T b)
{
    return b < a ? b : a;
}

template <typename T> T Limited(T value, float least, float most)
{
    return Smaller(Larger(value, T{} + least), T{} + most);
}

template <typename T> T Absolute(T value)
{
    return value < T{} ? -value : value;
}

float Root(float square)
{
    return std::sqrt(square);
}

Floats Root(Floats squares)
{
    return Floats{std::sqrt(squares[0]), std::sqrt(squares[1]), std::sqrt(squares[2]), std::sqrt(squares[3])};
}

int ToWhole(float value)
{
    return static_cast<int>(value);
}

Ints ToWhole(Floats values)
{
    return __builtin_convertvector(values, Ints);
}

// The largest error of both is about 1e-5 radians: a tenth of a pixel on any disc that fits a screen.
template <typename T> T FastAtan2(T y, T x)
{
    const T absX = Absolute(x);
    const T absY = Absolute(y);
    const T larger = Larger(absX, absY);
    const T ratio = larger > T{} ? Smaller(absX, absY) / larger : T{};
    const T square = ratio * ratio;
    T angle =
        ratio *
        (0.99997726F +
         square * (-0.33262347F +
                   square * (0.19354346F + square * (-0.11643287F + square * (0.05265332F + square * -0.01172120F)))));
    angle = absY > absX ? Pi / 2 - angle : angle;
    angle = x < T{} ? Pi - angle : angle;
    return y < T{} ? -angle : angle;
}

template <typename T> T FastAcos(T value)
{
    const T absolute = Smaller(Absolute(value), T{} + 1);
    const T angle =
        Root(1 - absolute) *
        (1.5707963050F +
         absolute *
             (-0.2145988016F +
              absolute *
                  (0.0889789874F +
                   absolute * (-0.0501743046F +
                               absolute * (0.0308918810F +
                                           absolute * (-0.0170881256F +
                                                       absolute * (0.0066700901F + absolute * -0.0012624911F)))))));
    return value < T{} ? Pi - angle : angle;
}

// Two channels at a time: share is 0 to 256.
quint32 Mix(quint32 a, quint32 b, quint32 share)
{
    const quint32 rest = 256 - share;
    const quint32 redBlue = (((a & 0xFF00FF) * rest + (b & 0xFF00FF) * share) >> 8) & 0xFF00FF;
    const quint32 alphaGreen = (((a >> 8) & 0xFF00FF) * rest + ((b >> 8) & 0xFF00FF) * share) & 0xFF00FF00;
    return redBlue | alphaGreen;
}

// What a pixel needs besides the texture, computed once per picture.
struct Shading
{
    float SunX = 0;
    float SunY = 0;
    float SunZ = 1;
    bool HasSun = false;
    float Night = 0;
    float Brightness = 1;
    float Limb = 0;
    bool HasAir = false;
    quint32 Air = 0;

    Shading(const CSphereView& view, const SphereLook& look)
        : HasSun(look.Sun.has_value()), Night(static_cast<float>(std::clamp(look.NightBrightness, 0.0, 1.0))),
          Brightness(static_cast<float>(std::clamp(look.Brightness, 0.0, 4.0))),
          Limb(static_cast<float>(std::clamp(look.LimbDarkening, 0.0, 1.0))), HasAir(look.Atmosphere.isValid()),
          Air(look.Atmosphere.rgb())
    {
        if (!HasSun)
            return;
        const UnitVector sun = ToVector(*look.Sun);
        SunX = static_cast<float>(Dot(sun, view.East()));
        SunY = static_cast<float>(Dot(sun, view.North()));
        SunZ = static_cast<float>(Dot(sun, view.Viewer()));
    }

    // How much light a point of the sphere gets, x to the right, y up, z to the viewer.
    template <typename T> [[nodiscard]] T Light(T x, T y, T z) const
    {
        const T light = Brightness * (1 - Limb * (1 - z) * (1 - z));
        if (!HasSun)
            return light;
        const T height = x * SunX + y * SunY + z * SunZ;
        // Twilight reaches a few degrees beyond the terminator.
        const T day = Limited(height * 4 + 0.3F, 0.0F, 1.0F);
        return light * (Night + (1 - Night) * day * (0.72F + 0.28F * Larger(height, T{})));
    }

    // How much of the air's colour lies over the ground.
    template <typename T> [[nodiscard]] T Haze(T z) const
    {
        const T edge = 1 - z;
        return HasAir ? edge * edge * edge * 0.75F + 0.04F : T{};
    }

    // Light and haze as shares of 256.
    [[nodiscard]] quint32 Colour(quint32 texel, quint32 light, quint32 haze) const
    {
        if (haze > 0)
            texel = Mix(texel, Air, haze);
        if (light <= 256)
            return 0xFF000000 | Mix(0, texel, light);
        const quint32 red = std::min(((texel >> 16) & 255) * light >> 8, 255U);
        const quint32 green = std::min(((texel >> 8) & 255) * light >> 8, 255U);
        const quint32 blue = std::min((texel & 255) * light >> 8, 255U);
        return 0xFF000000 | (red << 16) | (green << 8) | blue;
    }
};

// One point of the sphere in whole numbers, or four: its texel, light and haze, and how far north it lies, -1 to 1.
template <typename Real, typename Whole> struct SpotOf
{
    Whole U;
    Whole V;
    Whole Light;
    Whole Haze;
    Real North;
};
using Spot = SpotOf<float, int>;

class CSpotFinder
{
public:
    CSpotFinder(const CSphereView& view, const QImage& texture, const Shading& shading)
        : m_shading(shading), m_sinLatitude(static_cast<float>(view.Viewer().Z)),
          m_cosLatitude(static_cast<float>(view.North().Z)), m_width(texture.width() << CTextureSampler::PlaceBits),
          m_columnScale(static_cast<float>(texture.width()) * CTextureSampler::PlaceUnit / (2 * Pi)),
          m_rowScale(static_cast<float>(texture.height()) * CTextureSampler::PlaceUnit / Pi),
          m_center(static_cast<int>((view.Center().Longitude + 180.0) / 360.0 * m_width)),
          m_poleLimit(static_cast<float>(std::cos(std::min(0.5, PolePixels / view.Radius()))))
    {
    }

    [[nodiscard]] auto At(auto x, float y) const
    {
        using T = decltype(x);
        const T z = Root(Larger(1 - (x * x + y * y), T{}));
        const T north = Limited(y * m_cosLatitude + z * m_sinLatitude, -1.0F, 1.0F);
        const auto u = m_center + ToWhole(FastAtan2(x, z * m_cosLatitude - y * m_sinLatitude) * m_columnScale);
        return SpotOf<T, decltype(ToWhole(x))>{u, ToWhole(FastAcos(north) * m_rowScale),
                                               ToWhole(m_shading.Light(x, T{} + y, z) * 256),
                                               ToWhole(m_shading.Haze(z) * 256), north};
    }

    // The texture's width, as places are counted.
    [[nodiscard]] int Turn() const { return m_width; }

    // Whether the points between two spots lie evenly between them.
    [[nodiscard]] bool IsEven(const Spot& a, const Spot& b) const
    {
        return std::max(std::fabs(a.North), std::fabs(b.North)) < m_poleLimit && std::abs(a.U - b.U) < m_width / 8;
    }

private:
    // Around a pole meridians turn too quickly for even steps.
    static constexpr double PolePixels = 40;

    Shading m_shading;
    float m_sinLatitude;
    float m_cosLatitude;
    int m_width;
    float m_columnScale;
    float m_rowScale;
    int m_center;
    float m_poleLimit;
};

// Spots along one row of pixels, found four at a time.
class CSpotRow
{
public:
    explicit CSpotRow(int most) : m_x(static_cast<std::size_t>(most) / 4 + 1), m_spots(m_x.size()) {}

    void Clear() { m_count = 0; }
    void Add(float x)
    {
        m_x[m_count / 4][m_count % 4] = x;
        ++m_count;
    }

    // Finds what belongs to the places that were added.
    void Find(const CSpotFinder& finder, float y)
    {
        for (std::size_t four = 0; four * 4 < m_count; ++four)
            m_spots[four] = finder.At(m_x[four], y);
    }

    [[nodiscard]] Spot operator[](std::size_t index) const
    {
        const SpotOf<Floats, Ints>& four = m_spots[index / 4];
        const std::size_t at = index % 4;
        return {four.U[at], four.V[at], four.Light[at], four.Haze[at], four.North[at]};
    }

private:
    std::size_t m_count = 0;
    std::vector<Floats> m_x;
    std::vector<SpotOf<Floats, Ints>> m_spots;
};

// The same as a division by that power of two, which rounds towards zero, and many times as quick.
int StepOf(int way, int bits)
{
    return (way + ((way >> 31) & ((1 << bits) - 1))) >> bits;
}

// Draws the pixels of a block, two or more, between two spots in even steps.
void DrawBlock(quint32* line, int bits, Spot from, Spot to, int turn, const CTextureSampler& sampler,
               const Shading& shading)
{
    // Where the texture's edges meet, a turn may be between a place and its texel.
    if (std::max(from.U, to.U) >= turn) {
        from.U -= turn;
        to.U -= turn;
    } else if (std::min(from.U, to.U) < 0) {
        from.U += turn;
        to.U += turn;
    }
    const int width = 1 << bits;
    const int stepU = StepOf(to.U - from.U, bits);
    const int stepV = StepOf(to.V - from.V, bits);
    const int stepLight = to.Light - from.Light;
    const int stepHaze = to.Haze - from.Haze;
    int u = from.U;
    int v = from.V;
    int light = from.Light * width + width / 2;
    int haze = from.Haze * width + width / 2;
    const int brightest = std::max(from.Light, to.Light);
    if (brightest > 512 || !sampler.IsWhole(from.U, from.V, to.U, to.V)) {
        for (int column = 0; column < width; ++column) {
            line[column] = shading.Colour(sampler.At(u, v), static_cast<quint32>(light >> bits),
                                          static_cast<quint32>(haze >> bits));
            u += stepU;
            v += stepV;
            light += stepLight;
            haze += stepHaze;
        }
        return;
    }
    const int halved = brightest > 256 ? 1 : 0;
    const auto mixture = [&](int lightHere, int hazeHere) {
        const auto lightParts = static_cast<quint32>(lightHere >> (bits + halved));
        const quint32 airParts = static_cast<quint32>(hazeHere >> bits) * lightParts >> 8;
        return CTextureSampler::Mixture{lightParts - airParts, airParts};
    };
    for (int column = 0; column < width; column += 2) {
        sampler.DrawPair(line + column, {u, v}, {u + stepU, v + stepV}, mixture(light, haze),
                         mixture(light + stepLight, haze + stepHaze), shading.Air, 8 - halved);
        u += 2 * stepU;
        v += 2 * stepV;
        light += 2 * stepLight;
        haze += 2 * stepHaze;
    }
}

// The colour of the air beside the disc over what is behind, at a distance of more than one radius.
quint32 Glow(const Shading& shading, quint32 background, float x, float y, float distance)
{
    const float height = (distance - 1) / GlowWidth;
    if (height >= 1)
        return background;
    const float fade = (1 - height) * (1 - height) * 0.55F;
    const float light = std::min(1.0F, shading.Light(x / distance, y / distance, 0.5F));
    return Mix(background, 0xFF000000 | shading.Air, static_cast<quint32>(fade * light * 256));
}
} // namespace

CSphereRenderer::CSphereRenderer()
{
    SetColor(QColor(128, 128, 128));
}

void CSphereRenderer::SetColor(const QColor& color)
{
    QImage texture(2, 1, QImage::Format_RGB32);
    texture.fill(color);
    m_texture = std::make_shared<const CSphereTexture>(texture);
}

void CSphereRenderer::Render(QImage& target, const CSphereView& view, const SphereLook& look) const
{
    if (target.isNull())
        return;
    if (target.format() != QImage::Format_ARGB32_Premultiplied)
        target = target.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const quint32 background = qPremultiply(look.Background.rgba());
    target.fill(background);

    // About one texel for each pixel in the middle of the disc.
    const QImage& texture = m_texture->ForWidth(view.Radius() * 2 * std::numbers::pi * 0.8);
    const CTextureSampler sampler(texture);
    const Shading shading(view, look);
    const CSpotFinder finder(view, texture, shading);
    const auto radius = static_cast<float>(view.Radius());
    const float inverse = 1 / radius;
    const float reach = 1 + std::max(shading.HasAir ? GlowWidth : 0.0F, inverse);
    const float inside = 1 - 2 * inverse;
    const auto x0 = static_cast<float>(0.5 - view.CenterPixel().x());
    // A row is drawn in blocks of two to some power of pixels.
    struct Block
    {
        int Column;
        int Bits;
    };
    uchar* const pixels = target.bits(); // here, where only one thread asks
    const qsizetype stride = target.bytesPerLine();
    const int width = target.width();
    const auto drawRow = [&](int row, std::vector<Block>& blocks, CSpotRow& spots) {
        const float y = static_cast<float>(view.CenterPixel().y() - row - 0.5) * inverse;
        if (std::fabs(y) >= reach)
            return;
        const auto halfWidth = static_cast<double>(std::sqrt(reach * reach - y * y) * radius);
        const int first = std::max(0, static_cast<int>(std::max(view.CenterPixel().x() - halfWidth, 0.0)));
        const int end =
            static_cast<int>(std::clamp(view.CenterPixel().x() + halfWidth + 1, 0.0, static_cast<double>(width)));
        auto* line = reinterpret_cast<quint32*>(pixels + row * stride);

        const auto squareAt = [&](float x) { return x * x + y * y; };
        const auto horizontal = [&](int column) { return (static_cast<float>(column) + x0) * inverse; };
        const auto drawExactly = [&](int column, const Spot& spot) {
            const float x = horizontal(column);
            const float square = squareAt(x);
            const float distance = square > inside ? std::sqrt(square) : 0.0F;
            const float coverage = square > inside ? (1 - distance) * radius + 0.5F : 1.0F;
            quint32 behind = background;
            if (coverage < 1 && shading.HasAir)
                behind = Glow(shading, background, x, y, std::max(distance, 1.0F));
            if (coverage <= 0) {
                line[column] = behind;
                return;
            }
            const quint32 color = shading.Colour(sampler.At(spot.U, spot.V), static_cast<quint32>(spot.Light),
                                                 static_cast<quint32>(spot.Haze));
            line[column] = coverage >= 1 ? color : Mix(behind, color, static_cast<quint32>(coverage * 256));
        };

        // Whether even steps between these two points stay within a quarter of a pixel.
        const auto isFlat = [&](int column, int size) {
            const float square = std::max(squareAt(horizontal(column)), squareAt(horizontal(column + size)));
            const auto length = static_cast<float>(size * size);
            const float depth = 1 - square; // its third power is the sixth of the depth's
            return column + size <= end && square < inside &&
                   length * length < 4 * radius * radius * depth * depth * depth;
        };
        blocks.clear();
        spots.Clear();
        int bits = 0;
        const float outside = (1 + inverse) * (1 + inverse);
        for (int column = first; column < end; column += 1 << bits) {
            const float x = horizontal(column);
            if (const float square = squareAt(x); square > outside) {
                if (shading.HasAir)
                    line[column] = Glow(shading, background, x, y, std::sqrt(square));
                bits = 0;
                continue;
            }
            bits = std::min(bits + 1, LargestBlockBits);
            while (bits > 0 && !isFlat(column, 1 << bits))
                --bits;
            blocks.push_back({column, bits});
            spots.Add(x);
        }
        spots.Add(horizontal(end));
        spots.Find(finder, y);
        for (std::size_t index = 0; index < blocks.size(); ++index) {
            const Block& block = blocks[index];
            if (block.Bits == 0) {
                drawExactly(block.Column, spots[index]);
            } else if (finder.IsEven(spots[index], spots[index + 1])) {
                DrawBlock(line + block.Column, block.Bits, spots[index], spots[index + 1], finder.Turn(), sampler,
                          shading);
            } else {
                for (int column = block.Column; column < block.Column + (1 << block.Bits); ++column)
                    drawExactly(column, finder.At(horizontal(column), y));
            }
        }
    };
    RowCrew::ForSlices(target.height(), [&](int firstRow, int endRow) {
        std::vector<Block> blocks;
        CSpotRow spots(width + 1);
        for (int row = firstRow; row < endRow; ++row)
            drawRow(row, blocks, spots);
    });
}

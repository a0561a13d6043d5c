#pragma once

#include <QImage>

#include <algorithm>
#include <bit>
#include <cstring>

/// Reads colours between the texels of a picture of a sphere. Places are whole numbers, counted from the left and upper
/// edge with PlaceBits binary places: quick to step along a row.
class CTextureSampler
{
public:
    static constexpr int PlaceBits = 12;
    static constexpr float PlaceUnit = 1 << PlaceBits;

    struct Place
    {
        int U;
        int V;
    };

    /// What a pixel's colour is made of: so many parts of the ground and so many of another colour.
    struct Mixture
    {
        quint32 Ground;
        quint32 Other;
    };

    /// The picture (32 bits, not null) must outlive the sampler.
    explicit CTextureSampler(const QImage& texture)
        : m_bits(reinterpret_cast<const quint32*>(texture.constBits())),
          m_stride(static_cast<int>(texture.bytesPerLine() / 4)), m_width(texture.width()), m_height(texture.height())
    {
    }

    /// The colour of any place up to one turn outside.
    [[nodiscard]] quint32 At(int u, int v) const
    {
        const int left = u - Half;
        const int top = v - Half;
        const int row = top >> PlaceBits;
        const int column0 = Column(left >> PlaceBits);
        const int column1 = column0 + 1 < m_width ? column0 + 1 : 0;
        const quint32* upper = m_bits + static_cast<qsizetype>(Row(row)) * m_stride;
        const quint32* lower = m_bits + static_cast<qsizetype>(Row(row + 1)) * m_stride;
        const quint32 pixels = static_cast<quint32>((left >> (PlaceBits - 8)) & 255);
        return Blend(Blend(upper[column0], upper[column1], pixels), Blend(lower[column0], lower[column1], pixels),
                     static_cast<quint32>((top >> (PlaceBits - 8)) & 255));
    }

    /// Whether all texels around the places between these two lie side by side in the picture.
    [[nodiscard]] bool IsWhole(int u0, int v0, int u1, int v1) const
    {
        const auto [left, right] = std::minmax(u0, u1);
        const auto [top, bottom] = std::minmax(v0, v1);
        return left >= Half && top >= Half && ((right - Half) >> PlaceBits) + 1 < m_width &&
               ((bottom - Half) >> PlaceBits) + 1 < m_height;
    }

    /// Writes the colours of two places whose texels lie side by side to two pixels. Parts are of two to the power of
    /// `bits`, at most 8; those of a pixel are together 256 at most.
    void DrawPair(quint32* pixels, Place first, Place second, Mixture firstMix, Mixture secondMix, quint32 other,
                  int bits) const
    {
        const Words one = BetweenRows(first);
        const Words two = BetweenRows(second);
        const Words left = __builtin_shufflevector(one, two, 0, 1, 2, 3, 8, 9, 10, 11);
        const Words right = __builtin_shufflevector(one, two, 4, 5, 6, 7, 12, 13, 14, 15);
        const Words share = Both(Share(first.U), Share(second.U));
        const Words ground = left + ((right - left) * share >> ShareBits);
        const UnsignedWords lit = Unsigned(ground) * Unsigned(Both(firstMix.Ground, secondMix.Ground)) +
                                  Unsigned(SpreadTwice(other)) * Unsigned(Both(firstMix.Other, secondMix.Other));
        Store(pixels, lit >> bits);
    }

private:
    static constexpr int Half = 1 << (PlaceBits - 1);
    // Of a texel between its neighbours: so few that a product fits a word.
    static constexpr int ShareBits = 7;

    // Two colours with 16 bits for each channel, which one instruction weighs together.
    using Words = qint16 __attribute__((vector_size(16)));
    using UnsignedWords = quint16 __attribute__((vector_size(16)));
    using Bytes = quint8 __attribute__((vector_size(8)));
    using Pair = quint64 __attribute__((vector_size(16)));

    static int Share(int place) { return ((place - Half) >> (PlaceBits - ShareBits)) & ((1 << ShareBits) - 1); }

    // For what needs all 16 bits.
    static UnsignedWords Unsigned(Words words) { return std::bit_cast<UnsignedWords>(words); }

    // One number for all channels of a colour, another for those of the other.
    static Words Both(auto first, auto second)
    {
        constexpr quint64 all = 0x0001000100010001;
        return std::bit_cast<Words>(Pair{static_cast<quint64>(first) * all, static_cast<quint64>(second) * all});
    }

    static Words Load(const quint32* twoTexels)
    {
        Bytes bytes;
        std::memcpy(&bytes, twoTexels, sizeof(bytes));
        return __builtin_convertvector(bytes, Words);
    }

    static Words SpreadTwice(quint32 color)
    {
        const quint32 twice[2] = {color, color};
        return Load(twice);
    }

    static void Store(quint32* pixels, UnsignedWords colors)
    {
        constexpr quint16 most = 255;
        const Bytes bytes = __builtin_convertvector(colors < most ? colors : UnsignedWords{} + most, Bytes);
        const quint64 opaque = std::bit_cast<quint64>(bytes) | 0xFF000000FF000000;
        std::memcpy(pixels, &opaque, sizeof(opaque));
    }

    // The two columns of texels around the place, each weighed between its upper and its lower one.
    [[nodiscard]] Words BetweenRows(Place place) const
    {
        const quint32* texels =
            m_bits + static_cast<qsizetype>((place.V - Half) >> PlaceBits) * m_stride + ((place.U - Half) >> PlaceBits);
        const Words upper = Load(texels);
        const Words lower = Load(texels + m_stride);
        const auto share = static_cast<qint16>(Share(place.V));
        return upper + ((lower - upper) * share >> ShareBits);
    }

    // Two channels at a time; the share of the second is of 256.
    static quint32 Blend(quint32 a, quint32 b, quint32 share)
    {
        constexpr quint32 two = 0x00FF00FF;
        const quint32 redBlue = ((a & two) * (256 - share) + (b & two) * share) >> 8 & two;
        const quint32 green = ((a >> 8 & two) * (256 - share) + (b >> 8 & two) * share) & ~two;
        return redBlue | green;
    }

    [[nodiscard]] int Row(int row) const { return std::clamp(row, 0, m_height - 1); }
    [[nodiscard]] int Column(int column) const
    {
        if (column < 0)
            column += m_width;
        else if (column >= m_width)
            column -= m_width;
        return std::clamp(column, 0, m_width - 1);
    }

    const quint32* m_bits;
    int m_stride;
    int m_width;
    int m_height;
};

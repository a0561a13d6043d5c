#pragma once

#include <QImage>

#include <algorithm>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

/// Reads colours between the texels of a picture of a sphere. Places are whole numbers, counted from the left and upper
/// edge with PlaceBits binary places: quick to step along a row. Shares are parts of 256.
class CTextureSampler
{
public:
    static constexpr int PlaceBits = 12;
    static constexpr float PlaceUnit = 1 << PlaceBits;

    /// The picture (32 bits, not null) must outlive the sampler.
    explicit CTextureSampler(const QImage& texture)
        : m_bits(reinterpret_cast<const quint32*>(texture.constBits())),
          m_stride(static_cast<int>(texture.bytesPerLine() / 4)), m_width(texture.width()), m_height(texture.height())
    {
    }

    /// Any place up to one turn outside.
    [[nodiscard]] quint32 At(int u, int v) const
    {
        const int left = u - Half;
        const int top = v - Half;
        const int row = top >> PlaceBits;
        const int column0 = Column(left >> PlaceBits);
        const int column1 = column0 + 1 < m_width ? column0 + 1 : 0;
        const quint32* upper = m_bits + static_cast<qsizetype>(Row(row)) * m_stride;
        const quint32* lower = m_bits + static_cast<qsizetype>(Row(row + 1)) * m_stride;
        return Gather(Blend(upper[column0], upper[column1], lower[column0], lower[column1], Shares(left, top)));
    }

    /// Whether all texels around the places between these two lie side by side in the picture.
    [[nodiscard]] bool IsWhole(int u0, int v0, int u1, int v1) const
    {
        const auto [left, right] = std::minmax(u0, u1);
        const auto [top, bottom] = std::minmax(v0, v1);
        return left >= Half && top >= Half && ((right - Half) >> PlaceBits) + 1 < m_width &&
               ((bottom - Half) >> PlaceBits) + 1 < m_height;
    }

    /// The colour of a place whose texels lie side by side, by the share of the light, with another colour added by a
    /// share of its own. Both shares together are 256 at most.
    [[nodiscard]] quint32 Lit(int u, int v, quint32 light, quint32 added, quint32 addedShare) const
    {
        const int left = u - Half;
        const int top = v - Half;
        const quint32* upper = m_bits + static_cast<qsizetype>(top >> PlaceBits) * m_stride + (left >> PlaceBits);
        const quint32* lower = upper + m_stride;
        const Corners shares = Shares(left, top);
#ifdef __SSE2__
        // One register holds the four channels of both texels of a column, so that one instruction weighs and adds
        // them.
        const __m128i zero = _mm_setzero_si128();
        const __m128i columns = _mm_unpacklo_epi8(LoadPair(upper), LoadPair(lower));
        const __m128i ground = _mm_srli_epi32(
            _mm_add_epi32(_mm_madd_epi16(_mm_unpacklo_epi8(columns, zero), WeighPair(shares.A, shares.C)),
                          _mm_madd_epi16(_mm_unpackhi_epi8(columns, zero), WeighPair(shares.B, shares.D))),
            8);
        const __m128i above =
            _mm_unpacklo_epi16(zero, _mm_unpacklo_epi8(_mm_cvtsi32_si128(static_cast<int>(added)), zero));
        const __m128i lit =
            _mm_srli_epi32(_mm_madd_epi16(_mm_or_si128(ground, above), WeighPair(light, addedShare)), 8);
        const __m128i words = _mm_packs_epi32(lit, lit);
        return 0xFF000000 | static_cast<quint32>(_mm_cvtsi128_si32(_mm_packus_epi16(words, words)));
#else
        const quint64 ground = Blend(upper[0], upper[1], lower[0], lower[1], shares);
        return 0xFF000000 | Gather(((ground * light + Spread(added) * addedShare) >> 8) & SpreadMask);
#endif
    }

private:
    static constexpr int Half = 1 << (PlaceBits - 1);
    // A colour with sixteen bits for each channel, so that one multiplication does all four.
    static constexpr quint64 SpreadMask = 0x00FF00FF00FF00FF;

    // The shares of the four texels around a place: two above, two below.
    struct Corners
    {
        quint32 A, B, C, D;
    };

    static Corners Shares(int left, int top)
    {
        const auto right = static_cast<quint32>((left >> (PlaceBits - 8)) & 255);
        const auto down = static_cast<quint32>((top >> (PlaceBits - 8)) & 255);
        const quint32 both = (right * down + 128) >> 8;
        return {256 - right - down + both, right - both, down - both, both};
    }

    static quint64 Spread(quint32 color)
    {
        return (color | (static_cast<quint64>(color) << 24)) & SpreadMask;
    }
    static quint32 Gather(quint64 spread)
    {
        return static_cast<quint32>(spread | (spread >> 24));
    }
    static quint64 Blend(quint32 a, quint32 b, quint32 c, quint32 d, const Corners& shares)
    {
        return ((Spread(a) * shares.A + Spread(b) * shares.B + Spread(c) * shares.C + Spread(d) * shares.D) >> 8) &
               SpreadMask;
    }

#ifdef __SSE2__
    static __m128i LoadPair(const quint32* texels)
    {
        return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(texels));
    }
    static __m128i WeighPair(quint32 first, quint32 second)
    {
        return _mm_set1_epi32(static_cast<int>(first | (second << 16)));
    }
#endif

    [[nodiscard]] int Row(int row) const
    {
        return std::clamp(row, 0, m_height - 1);
    }
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

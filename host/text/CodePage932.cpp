#include "host/text/CodePage932.h"

#include <array>
#include <cerrno>
#include <iconv.h>
#include <memory>
#include <stdexcept>
#include <type_traits>

namespace
{
struct IconvClose
{
    void operator()(iconv_t handle) const { iconv_close(handle); }
};
using IconvHandle = std::unique_ptr<std::remove_pointer_t<iconv_t>, IconvClose>;

IconvHandle OpenConverter(const char* to, const char* from)
{
    const iconv_t handle = iconv_open(to, from);
    if (handle == reinterpret_cast<iconv_t>(-1)) // NOLINT(performance-no-int-to-ptr): how iconv says no
        throw std::runtime_error("the C library has no converter for code page 932");
    return IconvHandle(handle);
}

iconv_t Decoder()
{
    thread_local const IconvHandle handle = OpenConverter("UTF-16LE", "CP932");
    return handle.get();
}

iconv_t Encoder()
{
    thread_local const IconvHandle handle = OpenConverter("CP932", "UTF-16LE");
    return handle.get();
}

/// Single bytes that Windows gives a character and the C library refuses.
struct SingleByte
{
    unsigned char Byte;
    char16_t Character;
};
constexpr std::array SingleBytes{SingleByte{0x80, 0x0080}, SingleByte{0xA0, 0x00A0}, SingleByte{0xFD, 0xF8F1},
                                 SingleByte{0xFE, 0xF8F2}, SingleByte{0xFF, 0xF8F3}};

char16_t OfSingleByte(unsigned char byte)
{
    for (const SingleByte& single : SingleBytes) {
        if (single.Byte == byte)
            return single.Character;
    }
    return QChar::ReplacementCharacter;
}

char ToSingleByte(char16_t character)
{
    for (const SingleByte& single : SingleBytes) {
        if (single.Character == character)
            return static_cast<char>(single.Byte);
    }
    return '?';
}

template <typename Container> bool IsAscii(const Container& text)
{
    for (const auto unit : text) {
        if constexpr (sizeof(unit) == 1) {
            if (static_cast<unsigned char>(unit) >= 0x80)
                return false;
        } else if (unit.unicode() >= 0x80)
            return false;
    }
    return true;
}
} // namespace

QString CodePage932::Decode(QByteArrayView bytes)
{
    if (IsAscii(bytes))
        return QString::fromLatin1(bytes);
    QString text(bytes.size(), Qt::Uninitialized); // no character is longer in UTF-16 than in the code page
    char* in = const_cast<char*>(bytes.data());    // iconv takes a pointer to non-const but does not write
    auto inLeft = static_cast<size_t>(bytes.size());
    char* out = reinterpret_cast<char*>(text.data());
    auto outLeft = static_cast<size_t>(text.size()) * sizeof(QChar);
    iconv(Decoder(), nullptr, nullptr, nullptr, nullptr);
    while (inLeft > 0) {
        if (iconv(Decoder(), &in, &inLeft, &out, &outLeft) != static_cast<size_t>(-1))
            break;
        *reinterpret_cast<char16_t*>(out) = OfSingleByte(static_cast<unsigned char>(*in));
        out += sizeof(QChar);
        outLeft -= sizeof(QChar);
        ++in;
        --inLeft;
    }
    text.truncate(text.size() - static_cast<qsizetype>(outLeft / sizeof(QChar)));
    return text;
}

QByteArray CodePage932::Encode(QStringView text)
{
    if (IsAscii(text))
        return text.toLatin1();
    QByteArray bytes(text.size() * 2, Qt::Uninitialized);
    char* in = reinterpret_cast<char*>(const_cast<QChar*>(text.data()));
    auto inLeft = static_cast<size_t>(text.size()) * sizeof(QChar);
    char* out = bytes.data();
    auto outLeft = static_cast<size_t>(bytes.size());
    iconv(Encoder(), nullptr, nullptr, nullptr, nullptr);
    while (inLeft > 0) {
        if (iconv(Encoder(), &in, &inLeft, &out, &outLeft) != static_cast<size_t>(-1))
            break;
        const bool isPair = inLeft >= 2 * sizeof(QChar) && reinterpret_cast<const QChar*>(in)->isHighSurrogate() &&
                            (reinterpret_cast<const QChar*>(in) + 1)->isLowSurrogate();
        const size_t skipped = (isPair ? 2 : 1) * sizeof(QChar);
        *out++ = ToSingleByte(*reinterpret_cast<const char16_t*>(in));
        --outLeft;
        in += skipped;
        inLeft -= skipped;
    }
    bytes.truncate(bytes.size() - static_cast<qsizetype>(outLeft));
    return bytes;
}

QByteArrayView CodePage932::CompletePrefix(QByteArrayView bytes)
{
    qsizetype i = 0;
    while (i < bytes.size()) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        const bool isDouble = (lead >= 0x81 && lead <= 0x9F) || (lead >= 0xE0 && lead <= 0xFC);
        if (isDouble && i + 1 == bytes.size())
            return bytes.first(i);
        i += isDouble ? 2 : 1;
    }
    return bytes;
}

bool CodePage932::IsRepresentable(QStringView text)
{
    return Decode(Encode(text)) == text;
}

#pragma once

#include <QByteArray>
#include <QString>

/// The Japanese multibyte code page 932 in the Windows table (0x8160 is U+FF5E, 0x817C is U+FF0D).
namespace CodePage932
{
/// Decodes bytes; a byte that begins no character becomes U+FFFD. Never fails.
[[nodiscard]] QString Decode(QByteArrayView bytes);

/// Encodes text; a character that the code page lacks becomes "?". A byte order mark and the invisible tag
/// characters (U+E0000 to U+E007F) are dropped.
[[nodiscard]] QByteArray Encode(QStringView text);

/// Whether every character of the text survives encoding and decoding unchanged.
[[nodiscard]] bool IsRepresentable(QStringView text);

/// The bytes without a last lead byte that has lost its second byte.
[[nodiscard]] QByteArrayView CompletePrefix(QByteArrayView bytes);
} // namespace CodePage932

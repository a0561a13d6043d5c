#include "host/dialog/Theme.h"

#include "host/text/FontFamilies.h"

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QPalette>
#include <QStyleFactory>

using namespace Qt::StringLiterals;

namespace
{
constexpr double FontPoints = 10.0;

/// The first of the usual Japanese fonts that is installed; the system's own when none is.
QFont JapaneseFont()
{
    QFont font = QApplication::font();
    for (const QString& family : JapaneseFontFamilies()) {
        if (QFontDatabase::hasFamily(family)) {
            font.setFamily(family);
            break;
        }
    }
    font.setPointSizeF(FontPoints);
    return font;
}

QPalette NightPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0x17, 0x1b, 0x24));
    palette.setColor(QPalette::WindowText, QColor(0xd5, 0xda, 0xe3));
    palette.setColor(QPalette::Base, QColor(0x0e, 0x11, 0x18));
    palette.setColor(QPalette::AlternateBase, QColor(0x1c, 0x21, 0x2c));
    palette.setColor(QPalette::Text, QColor(0xd5, 0xda, 0xe3));
    palette.setColor(QPalette::Button, QColor(0x2a, 0x31, 0x3f));
    palette.setColor(QPalette::ButtonText, QColor(0xd5, 0xda, 0xe3));
    palette.setColor(QPalette::ToolTipBase, QColor(0x2a, 0x31, 0x3f));
    palette.setColor(QPalette::ToolTipText, QColor(0xd5, 0xda, 0xe3));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x6f, 0xb0));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x7f, 0xb2, 0xf0));
    palette.setColor(QPalette::PlaceholderText, QColor(0x7d, 0x86, 0x96));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x66, 0x6e, 0x7d));
    return palette;
}
} // namespace

void Theme::Install(QApplication& application)
{
    application.setStyle(QStyleFactory::create(u"Fusion"_s));
    application.setPalette(NightPalette());
    application.setFont(JapaneseFont());
    QFile sheet(u":/kiv/theme.qss"_s);
    if (sheet.open(QIODevice::ReadOnly))
        application.setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

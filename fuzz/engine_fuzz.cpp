#include "controls/sky_engine/SkyEngine.h"

#include <QApplication>

#include <cstddef>
#include <cstdint>

namespace
{
QApplication& Application()
{
    static int count = 1;
    static char name[] = "engine_fuzz";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication application(count, arguments);
    return application;
}
} // namespace

// Each line of the input is one command line; the engine lives through all of them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Application();
    CSkyEngine engine(nullptr, QString());
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    for (const QStringView line : QStringView(text).split(u'\n'))
        engine.Command(line.toString());
    for (const char16_t* query : {u"? Location", u"? Location.Altitude", u"? Time", u"? View.Angle"})
        engine.Command(QString::fromUtf16(query));
    return 0;
}

#include "host/dialog/Contrast.h"

#include <QEvent>
#include <QLineEdit>

#include <algorithm>
#include <cmath>

namespace
{
double Linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color)
{
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) + 0.0722 * Linear(color.blueF());
}

QColor Mixed(const QColor& color, const QColor& ground, double share)
{
    const auto channel = [share](float a, float b) { return static_cast<float>(share * a + (1 - share) * b); };
    return QColor::fromRgbF(channel(color.redF(), ground.redF()), channel(color.greenF(), ground.greenF()),
                            channel(color.blueF(), ground.blueF()));
}

/// Sets the colour of a placeholder where the palette's own cannot be read.
class CPlaceholderKeeper : public QObject
{
public:
    explicit CPlaceholderKeeper(QLineEdit& box) : QObject(&box), m_box(box)
    {
        box.installEventFilter(this);
        Keep();
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::PaletteChange)
            Keep();
        return QObject::eventFilter(watched, event);
    }

private:
    void Keep()
    {
        QPalette palette = m_box.palette();
        const QColor ground = palette.color(QPalette::Base);
        const QColor text = palette.color(QPalette::Text);
        if (Contrast::Ratio(palette.color(QPalette::PlaceholderText), ground) >= Contrast::Readable ||
            Contrast::Ratio(text, ground) < Contrast::Readable)
            return; // a text box that cannot be read itself is beyond help
        double share = 0.5;
        while (Contrast::Ratio(Mixed(text, ground, share), ground) < Contrast::Readable)
            share += 0.05;
        palette.setColor(QPalette::PlaceholderText, Mixed(text, ground, std::min(share, 1.0)));
        m_box.setPalette(palette);
    }

    QLineEdit& m_box; ///< owns this
};
} // namespace

double Contrast::Ratio(const QColor& color, const QColor& ground)
{
    const double a = Luminance(Mixed(color, ground, color.alphaF()));
    const double b = Luminance(ground);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor Contrast::GroundFor(const QColor& text, const QColor& ground)
{
    constexpr double ample = 7.0; // styles draw their buttons brighter or darker than the palette says
    if (Ratio(text, ground) >= ample)
        return ground;
    constexpr float step = 0.02F;
    const bool isDark = Ratio(text, Qt::black) > Ratio(text, Qt::white);
    float hue = 0;
    float saturation = 0;
    float lightness = 0;
    ground.getHslF(&hue, &saturation, &lightness);
    QColor fitting = ground;
    while (Ratio(text, fitting) < ample && (isDark ? lightness > 0 : lightness < 1)) {
        lightness = std::clamp(isDark ? lightness - step : lightness + step, 0.0F, 1.0F);
        fitting = QColor::fromHslF(hue, saturation, lightness);
    }
    return fitting;
}

QColor Contrast::Halfway(const QColor& ink, const QColor& ground)
{
    return Mixed(ink, ground, 0.5);
}

void Contrast::KeepPlaceholderReadable(QLineEdit& box)
{
    new CPlaceholderKeeper(box); // a child of the box
}

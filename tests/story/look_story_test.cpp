#include "host/dialog/Contrast.h"
#include "host/dialog/Theme.h"
#include "tests/story/EveryWindow.h"

#include <QStyleFactory>
#include <QStyleOptionButton>

#include <map>

using namespace Qt::StringLiterals;

namespace
{
/// Where a widget writes its text, in its own coordinates; empty for one that writes none.
QRect TextPlace(const QWidget& widget)
{
    constexpr int edge = 4; // frame and caret keep off it
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return label->text().isEmpty() ? QRect() : label->contentsRect();
    if (qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QComboBox*>(&widget))
        return widget.rect().adjusted(edge, edge, qobject_cast<const QComboBox*>(&widget) ? -24 : -edge, -edge);
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    if (!button || button->text().isEmpty())
        return {};
    QStyleOptionButton option;
    option.initFrom(button);
    if (button->inherits("QRadioButton"))
        return button->style()->subElementRect(QStyle::SE_RadioButtonContents, &option, button);
    if (button->inherits("QCheckBox"))
        return button->style()->subElementRect(QStyle::SE_CheckBoxContents, &option, button);
    return button->rect().adjusted(2 * edge, edge, -2 * edge, -edge);
}

/// The contrast between what a picture shows most and what stands out most from it.
double ContrastIn(const QImage& picture)
{
    std::map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    const auto most = std::max_element(counts.begin(), counts.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    double contrast = 1;
    for (const auto& [color, count] : counts)
        contrast = std::max(contrast, Contrast::Ratio(QColor(color), QColor(most->first)));
    return contrast;
}

void ExpectReadable(QWidget& window)
{
    if (QWidget* focused = window.focusWidget())
        focused->clearFocus(); // what is selected has the host's own pair of colours
    const QImage picture = window.grab().toImage();
    int texts = 0;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const auto* edit = qobject_cast<QLineEdit*>(widget);
        const auto* combo = qobject_cast<QComboBox*>(widget);
        const bool isBlank = (edit && edit->text().isEmpty() && edit->placeholderText().isEmpty()) ||
                             (combo && combo->currentText().isEmpty());
        if (!widget->isVisible() || !widget->isEnabled() || isBlank)
            continue;
        const QRect place = TextPlace(*widget);
        if (place.isEmpty())
            continue;
        ++texts;
        const QRect shown(widget->mapTo(&window, place.topLeft()), place.size());
        const double contrast = ContrastIn(picture.copy(shown));
        EXPECT_GE(contrast, Contrast::Readable)
            << widget->metaObject()->className() << " " << widget->objectName().toStdString() << " "
            << widget->accessibleName().toStdString();
    }
    EXPECT_GT(texts, 2);
}
} // namespace

/// The look is the host's: ours, plain ones with the toolkit's light palette, a dark one.
class LookStory : public CEveryWindow, public ::testing::WithParamInterface<const char*>
{
protected:
    LookStory()
    {
        const QString style = QString::fromUtf8(GetParam());
        if (style.isEmpty())
            return;
        qApp->setStyleSheet(QString());
        const bool isDark = style == u"dark"_s;
        QApplication::setStyle(QStyleFactory::create(isDark ? u"fusion"_s : style));
        QApplication::setPalette(isDark ? QPalette(QColor(60, 60, 60), QColor(45, 45, 45))
                                        : QApplication::style()->standardPalette());
    }
    ~LookStory() override
    {
        Quit();
        Theme::Install(*qApp);
    }
};

TEST_P(LookStory, EveryTextStandsOutFromItsGround)
{
    Visit(ExpectReadable);
}

INSTANTIATE_TEST_SUITE_P(Looks, LookStory, testing::Values("", "fusion", "windows", "dark"));

// What a user types into the site dialog comes out as typed, with the host, its engine and the terrain answering.

#include "obs/core/SiteLocation.h"
#include "tests/story/StoryFixture.h"

#include <QInputMethodEvent>

using namespace Qt::StringLiterals;

namespace
{
using TypingStory = CStory;
using namespace ObsId;

struct Place
{
    double Longitude, Latitude;
};
constexpr Place Places[]{{139.691772, 35.689236}, {137.9, 36.25},     {-155.474722, 19.826111}, {-74.006, 40.712806},
                         {151.2099, -33.865143},  {86.925, 27.98806}, {-67.7551, -23.0229},     {15.6356, 78.2232}};

double SecondsOf(double degrees)
{
    return std::remainder(std::fabs(degrees) * 3600.0, 60.0);
}

TEST_F(TypingStory, SecondsComeOutAsTypedAndAsApplied)
{
    OpenSite();
    for (const int mode : {RadioAltAuto, RadioAltManual}) {
        Click(mode);
        for (const Place& place : Places) {
            if (mode == RadioAltManual && &place > &Places[1])
                break; // nothing answers to a key there
            for (const int box : {EditLngSec, EditLatSec}) {
                for (const char* text : {"12.34", "7.8", "45.6", "0.5", "59.95"}) {
                    SCOPED_TRACE(std::string(text) + " in " + std::to_string(box) + " at " +
                                 std::to_string(place.Longitude) + " mode " + std::to_string(mode));
                    Host().MoveObserver(place.Longitude, place.Latitude, 100.0);
                    Enter(box);
                    Type(text);
                    ASSERT_EQ(TextOf(box), text);
                    const auto applied = [&] {
                        return SecondsOf(box == EditLngSec ? Observer().GetLongitude() : Observer().GetLatitude());
                    };
                    EXPECT_NEAR(std::remainder(applied() - std::atof(text), 60.0), 0.0, 1e-6);
                    for (std::string rest(text); !rest.empty();) {
                        Key(Qt::Key_Backspace);
                        rest.pop_back();
                        ASSERT_EQ(TextOf(box), rest);
                        if (!rest.empty() && rest.back() != '.') {
                            EXPECT_NEAR(std::remainder(applied() - std::atof(rest.c_str()), 60.0), 0.0, 1e-6) << rest;
                        }
                    }
                }
            }
        }
    }
    Host().MoveObserver(137.9, 36.25, 100.0);
    Enter(EditLngSec);
    Type("12.34", 30);
    EXPECT_EQ(TextOf(EditLngSec), "12.34") << "typed slowly";
}

/// A committed composition, as an input method sends it.
void Compose(const QString& text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(QApplication::focusWidget(), &event);
}

TEST_F(TypingStory, FullWidthDigitsAreNumbers)
{
    OpenSite();
    Click(RadioAltManual);
    Enter(EditLngDeg);
    Type("１３８");
    EXPECT_EQ(TextOf(EditLngDeg), "138");
    EXPECT_EQ(std::floor(Observer().GetLongitude()), 138.0);
    Enter(EditLatSec);
    Compose(u"１２．５"_s);
    EXPECT_EQ(TextOf(EditLatSec), "12.5");
    EXPECT_NEAR(SecondsOf(Observer().GetLatitude()), 12.5, 1e-6);
    Enter(EditAlt);
    Paste(u"－６００\n"_s);
    EXPECT_EQ(TextOf(EditAlt), "-600");
    EXPECT_EQ(Observer().GetHeight(), -600.0);
    Enter(EditAlt);
    Compose(u"ー"_s); // the minus key in kana input
    Compose(u"３０"_s);
    EXPECT_EQ(Observer().GetHeight(), -30.0);
}

TEST_F(TypingStory, WhatABoxShowsWhenItIsLeftIsSo)
{
    OpenSite();
    Click(RadioAltManual);
    const auto longitude = [this] { return Observer().GetLongitude(); };
    Enter(EditLngSec);
    Type("12."); // waits for the next digit
    EXPECT_NEAR(SecondsOf(longitude()), 12.0, 1e-6) << "12 was applied with its last digit";
    Key(Qt::Key_Tab);
    EXPECT_EQ(TextOf(EditLngSec), "12");

    Prompts.Expect("経度には 0 から 180 までの値を入力してください。", IPrompts::Icon::Information);
    Enter(EditLngDeg);
    Type("181");
    EXPECT_EQ(TextOf(EditLngDeg), "180");
    EXPECT_LT(longitude(), 20.0) << "a correction waits for the next key";
    Key(Qt::Key_Tab);
    EXPECT_NEAR(longitude(), 180.0 + 41 / 60.0 + 12 / 3600.0, 1e-6) << "and is applied when the box is left";

    for (const char* text : {"", "-", "."}) {
        Enter(EditAlt);
        Type("77");
        Key(Qt::Key_A, Qt::ControlModifier);
        Key(Qt::Key_Delete);
        Type(text);
        Enter(EditLatDeg);
        EXPECT_EQ(TextOf(EditAlt), "77") << '"' << text << '"';
        EXPECT_EQ(Observer().GetHeight(), 77.0);
    }
    Enter(EditLatSec);
    Key(Qt::Key_Delete);
    Prompts.Expect("東経 180度41分12.0秒\n北緯  35度41分21.2秒\n標高 77m\nタイムゾーン +09時間00分\n\n"
                   "を初期値として設定します。",
                   IPrompts::Icon::Information, IPrompts::Buttons::OkCancel, IPrompts::Answer::Cancel);
    Key(Qt::Key_I, Qt::AltModifier); // the focus stays in the box
    EXPECT_TRUE(QTest::qWaitFor([this] { return TextOf(EditLatSec) == "21.2"; }));
    Enter(EditLatSec);
    Type("8.");
    Key(Qt::Key_Return);
    EXPECT_FALSE(Site().isVisible());
    EXPECT_EQ(TextOf(EditLatSec), "8");
    EXPECT_NEAR(SecondsOf(Observer().GetLatitude()), 8.0, 1e-6);
}

TEST_F(TypingStory, ForeignTextsFromTheClipboardChangeNothing)
{
    OpenSite();
    Click(RadioAltManual);
    for (const int box :
         {EditLngDeg, EditLngMin, EditLngSec, EditLatDeg, EditLatMin, EditLatSec, EditAlt, EditTzHour, EditTzMin}) {
        const std::string before = TextOf(box);
        for (const QString& text : {u"abc"_s, u"12abc"_s, u"35°41′21.2″"_s, u"35.689236, 139.691772"_s, u"1e3"_s,
                                    QString(40, u'7'), u"\U0001F30D"_s, u"5\n6 7"_s, u"１．２．３"_s}) {
            Enter(box);
            Paste(text);
            EXPECT_EQ(TextOf(box), before) << text.toStdString() << " in " << box;
        }
        Enter(box);
        Paste(u" 7\r\n"_s);
        EXPECT_EQ(TextOf(box), " 7") << box;
        Host().MoveObserver(139.691772, 35.689236, 39.0);
        Site().InitLocation(1);
        Click(RadioAltManual);
    }
    EXPECT_NEAR(Observer().GetLongitude(), 139.691772, 1e-9);
    EXPECT_NEAR(Observer().GetUserTz(), 7 + 7 / 60.0, 1e-9) << "what was a number was taken";
}
} // namespace

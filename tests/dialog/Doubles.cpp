#include "tests/dialog/Doubles.h"

#include "host/control/ControlNumbers.h"
#include "host/control/ControlRegister.h"
#include "host/dialog/HostMessage.h"
#include "host/text/Number.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
namespace Map = ControlNumber::GlobeMap;

std::string CTranscript::Take()
{
    m_lines.removeAll(u"E Show Sky"_s);
    std::string text = m_lines.join(u'\n').toStdString();
    m_lines.clear();
    return text;
}

void ControlScript::Register(const QString& className)
{
    CControlRegister::Instance().Register(className, [this](QWidget* parent) -> std::unique_ptr<IControl> {
        if (Refuses)
            return nullptr;
        auto control = std::make_unique<CRecordingControl>(parent, *this);
        Control = control.get();
        return control;
    });
}

QVariant CRecordingControl::Invoke(int method, const QVariantList& arguments)
{
    if (arguments.size() == 1 && method == ControlNumber::Engine::MethodCommand) {
        const QString line = arguments[0].toString();
        m_script.Transcript.Add(m_script.Tag + u' ' + line);
        return m_script.Answers.value(line);
    }
    QStringList texts;
    if (method == Map::SetFeatureFlags) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the address is what the method takes
        const auto* flags = reinterpret_cast<const int*>(static_cast<quintptr>(arguments[0].toULongLong()));
        m_script.Flags.assign(flags, flags + std::max(8, m_script.FeatureCount));
    } else if (method == Map::GetCenter && arguments.size() == 2) {
        *arguments[0].value<double*>() = m_script.CenterLongitude;
        *arguments[1].value<double*>() = m_script.CenterLatitude;
    } else {
        for (const QVariant& argument : arguments)
            texts += argument.typeId() == QMetaType::Double ? Number::Format("%.6f", argument.toDouble())
                                                            : argument.toString();
    }
    m_script.Transcript.Add(m_script.Tag + Number::Format(" %d(", method) + texts.join(u", "_s) + u')');
    if (m_script.During)
        m_script.During(method);
    if (method == Map::FeatureName)
        return m_script.FeatureNames.value(arguments.value(0).toInt());
    return method == Map::FeatureCount ? QVariant(m_script.FeatureCount) : m_script.Results.value(method);
}

void CRecordingControl::SetControlProperty(int property, const QVariant& value)
{
    m_script.Transcript.Add(m_script.Tag + Number::Format(" #%d = ", property) + value.toString());
}

CExpectedPrompts::~CExpectedPrompts()
{
    for (const Prompt& prompt : m_expected)
        ADD_FAILURE() << "never shown: " << prompt.Text.toStdString();
    EXPECT_TRUE(m_files.empty()) << "a file dialog never came";
}

void CExpectedPrompts::Expect(const char* text, Icon icon, Buttons buttons, Answer answer)
{
    m_expected.push_back({QString::fromUtf8(text), icon, buttons, answer});
}

IPrompts::Answer CExpectedPrompts::Show(QWidget* /*parent*/, const QString& text, Icon icon, Buttons buttons)
{
    if (m_answersAll)
        return Answer::Ok;
    if (m_expected.empty()) {
        ADD_FAILURE() << "unexpected: " << text.toStdString();
        return Answer::Cancel;
    }
    const Prompt prompt = m_expected.front();
    m_expected.pop_front();
    EXPECT_EQ(text.toStdString(), prompt.Text.toStdString());
    EXPECT_EQ(icon, prompt.ShownIcon) << text.toStdString();
    EXPECT_EQ(buttons, prompt.ShownButtons) << text.toStdString();
    return prompt.Reply;
}

QString CExpectedPrompts::OpenFile(QWidget* /*parent*/)
{
    if (m_files.empty()) {
        ADD_FAILURE() << "unexpected file dialog";
        return {};
    }
    const QString path = m_files.front();
    m_files.pop_front();
    return path;
}

bool CMessageReceiver::event(QEvent* event)
{
    if (event->type() != CHostMessage::EventType())
        return QWidget::event(event);
    const auto* message = static_cast<CHostMessage*>(event);
    m_log += Number::Format("%s %d %d %d", qUtf8Printable(m_name), message->Number, message->First.toInt(),
                            message->Second.toInt());
    return true;
}

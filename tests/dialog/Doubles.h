#pragma once

#include "host/control/Control.h"
#include "host/dialog/Prompts.h"

#include <QHash>
#include <QStringList>
#include <QWidget>

#include <deque>
#include <functional>
#include <vector>

/// Events that a control raised, by number.
using ControlEvents = std::vector<std::pair<int, QVariantList>>;

/// What happened at the dialog's seams, line by line in the order of time.
class CTranscript
{
public:
    void Add(const QString& line) { m_lines += line; }
    /// The lines since the last call, joined by line feeds; the "Show Sky" lines of mere painting are left out.
    std::string Take();
    [[nodiscard]] int PaintCount() const { return static_cast<int>(m_lines.count(QStringLiteral("E Show Sky"))); }

private:
    QStringList m_lines;
};

/// What a recording control writes and answers; outlives the control.
struct ControlScript
{
    ControlScript(QString tag, CTranscript& transcript) : Tag(std::move(tag)), Transcript(transcript) {}

    QString Tag;
    CTranscript& Transcript;
    QHash<QString, QString> Answers; ///< by the text of the query
    QHash<int, QVariant> Results;    ///< by the number of the method
    std::function<void(int)> During; ///< runs inside each numbered method
    int FeatureCount = 8;
    QStringList FeatureNames; ///< of the kinds, empty beyond them
    double CenterLongitude = 0.0;
    double CenterLatitude = 0.0;
    bool Refuses = false;                       ///< no control can be created
    std::vector<int> Flags;                     ///< layer flags handed over last
    class CRecordingControl* Control = nullptr; ///< the one created last

    /// Registers the recording control under a class name.
    void Register(const QString& className);
};

/// A sky engine, a globe map or a road map that records what is sent to it.
class CRecordingControl : public IControl
{
public:
    CRecordingControl(QWidget* parent, ControlScript& script) : m_window(new QWidget(parent)), m_script(script) {}
    ~CRecordingControl() override { delete m_window; }

    [[nodiscard]] QWidget* Window() override { return m_window; }
    QVariant Invoke(int method, const QVariantList& arguments) override;
    void SetControlProperty(int property, const QVariant& value) override;
    void Raise(int event, const QVariantList& arguments) const { RaiseEvent(event, arguments); }

private:
    QWidget* m_window;
    ControlScript& m_script;
};

/// Answers the prompts that a test expects, in their order. One that differs or that no one expects fails the test,
/// and so does one that never came.
class CExpectedPrompts : public IPrompts
{
public:
    CExpectedPrompts() = default;
    ~CExpectedPrompts() override;

    /// From now on any prompt may come and gets OK.
    void AnswerAll() { m_answersAll = true; }
    void Expect(const char* text, Icon icon, Buttons buttons = Buttons::Ok, Answer answer = Answer::Ok);
    /// Answers the next file dialog with the path, empty for cancel.
    void ExpectFile(const QString& path) { m_files.push_back(path); }
    /// Whether all that was expected has come.
    [[nodiscard]] bool AreDone() const { return m_expected.empty() && m_files.empty(); }
    Answer Show(QWidget* parent, const QString& text, Icon icon, Buttons buttons) override;
    QString OpenFile(QWidget* parent) override;

private:
    struct Prompt
    {
        QString Text;
        Icon ShownIcon;
        Buttons ShownButtons;
        Answer Reply;
    };
    std::deque<Prompt> m_expected;
    std::deque<QString> m_files;
    bool m_answersAll = false;
};

/// A window of the host that writes down the messages it gets.
class CMessageReceiver : public QWidget
{
public:
    CMessageReceiver(QString name, QStringList& log) : m_name(std::move(name)), m_log(log) {}

protected:
    bool event(QEvent* event) override;

private:
    QString m_name;
    QStringList& m_log;
};

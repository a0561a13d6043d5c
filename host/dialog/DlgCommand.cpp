#include "host/dialog/DlgCommand.h"

#include "host/dialog/CommandIds.h"
#include "host/dialog/ThemedControls.h"
#include "host/system/Registry.h"

#include <QDataStream>
#include <QIODevice>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace
{
const QString Section = u"Dialog\\Command"_s;
const QString CommandsName = u"Commands"_s; // the serialised history in Base64: a settings file is text
const QString CommandName = u"Command"_s;   // the last line
const QString EnableName = u"Enable"_s;     // whether the history is kept
constexpr QDataStream::Version StreamVersion = QDataStream::Qt_6_0;

QString ToText(const CCommandHistory& history)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(StreamVersion);
    stream << history;
    return QString::fromLatin1(bytes.toBase64());
}

CCommandHistory FromText(const QString& text)
{
    QDataStream stream(QByteArray::fromBase64(text.toLatin1()));
    stream.setVersion(StreamVersion);
    CCommandHistory history;
    stream >> history;
    return history;
}

bool IsSendable(const QString& line)
{
    return !line.trimmed().isEmpty() && line.size() <= CDlgCommand::LongestCommand;
}
} // namespace

CDlgCommand::CDlgCommand(CCorKiv* engine, QWidget* parent) : CKivDialog(CommandId::Template, Section, parent)
{
    SetHostEngine(engine);
}

bool CDlgCommand::OnInitDialog()
{
    CKivDialog::OnInitDialog();
    if (!TitleText.isEmpty())
        setWindowTitle(TitleText);
    AttachControls();
    ShowHistory(ReadHistory());
    CatchKeys();
    return true;
}

void CDlgCommand::AttachControls()
{
    SaveCheck = Item<CKivCheckBox>(CommandId::CheckSave);
    AnswerEdit = Item<CKivEdit>(CommandId::EditAnswer);
    CommandCombo = Item<CKivComboBox>(CommandId::ComboCommand);
    if (!CommandCombo || !CommandCombo->lineEdit())
        return;
    // What is sent is what was typed: nothing completes a line to an earlier one.
    CommandCombo->setCompleter(nullptr);
    CommandCombo->lineEdit()->setMaxLength(LongestCommand);
    CommandCombo->lineEdit()->setPlaceholderText(u"例：? Location"_s);
    // A line that is changed is the one being typed, wherever it came from.
    connect(CommandCombo->lineEdit(), &QLineEdit::textEdited, this, [this] { HistoryPosition = Typing; });
    connect(CommandCombo, &QComboBox::activated, this, [this](int index) { HistoryPosition = index; });
}

void CDlgCommand::OnOK()
{
    const QString line = TypedLine();
    if (IsSendable(line)) {
        ShowAnswer(HostEngine() ? HostEngine()->Command(line) : QString());
        Remember(line);
        ShowHistory(line);
    }
    if (CommandCombo)
        CommandCombo->setFocus();
}

void CDlgCommand::OnCancel()
{
    SaveHistory();
    CKivDialog::OnCancel();
}

void CDlgCommand::OnClose()
{
    OnCancel();
}

/// The text of the box as one line: pasted line breaks become blanks, as they look in the box.
QString CDlgCommand::TypedLine() const
{
    QString line = CommandCombo ? CommandCombo->currentText() : QString();
    for (QChar& character : line) {
        if (character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
            character == QChar::ParagraphSeparator)
            character = u' ';
    }
    return line;
}

void CDlgCommand::Remember(const QString& line)
{
    CommandHistory.removeAll(line);
    CommandHistory.prepend(line);
    if (CommandHistory.size() > LongestHistory)
        CommandHistory.resize(LongestHistory);
}

/// Fills the drop-down; the line stands in its box, selected, for the next one to be typed over it.
void CDlgCommand::ShowHistory(const QString& line)
{
    if (!CommandCombo || !CommandCombo->lineEdit())
        return;
    CommandCombo->clear();
    CommandCombo->addItems(CommandHistory);
    CommandCombo->setCurrentIndex(static_cast<int>(CommandHistory.indexOf(line)));
    CommandCombo->setEditText(line);
    CommandCombo->lineEdit()->selectAll();
    HistoryPosition = CommandCombo->currentIndex();
    TypedText.clear();
}

bool CDlgCommand::PreTranslateMessage(QKeyEvent& key)
{
    const bool isPlain = (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier; // with Alt the list opens
    if (!isPlain || !CommandCombo || !CommandCombo->hasFocus())
        return CKivDialog::PreTranslateMessage(key);
    if (key.key() == Qt::Key_Up)
        return WalkHistory(1);
    if (key.key() == Qt::Key_Down)
        return WalkHistory(-1);
    return CKivDialog::PreTranslateMessage(key);
}

/// A step to the older lines, or a negative one to the newer. Returns true: the key has no other meaning here.
bool CDlgCommand::WalkHistory(int step)
{
    const int position = HistoryPosition + step;
    if (position < Typing || position >= CommandHistory.size())
        return true;
    if (HistoryPosition == Typing)
        TypedText = CommandCombo->currentText();
    HistoryPosition = position;
    CommandCombo->setCurrentIndex(position);
    CommandCombo->setEditText(position == Typing ? TypedText : CommandHistory.at(position));
    CommandCombo->lineEdit()->end(false);
    return true;
}

void CDlgCommand::ShowAnswer(const QString& answer)
{
    if (!AnswerEdit)
        return;
    const int longest = AnswerEdit->maxLength();
    const QString ellipsis = u"…"_s;
    AnswerEdit->setPlaceholderText(u"（応答はありません）"_s);
    AnswerEdit->SetText(answer.size() <= longest ? answer : answer.left(longest - ellipsis.size()) + ellipsis);
    AnswerEdit->setCursorPosition(0);
}

/// Takes the history over from the settings and returns the last line; the stored values may hold anything.
QString CDlgCommand::ReadHistory()
{
    int isKept = 0;
    CRegistry::Read(Section, EnableName, 0, &isKept, CRegistry::Flag);
    if (SaveCheck)
        SaveCheck->setChecked(isKept != 0);
    if (isKept == 0)
        return {};
    QString commands;
    CRegistry::Read(Section, CommandsName, QString(), &commands);
    CommandHistory.clear();
    for (const CCommandHistory stored = FromText(commands); const QString& line : stored) {
        if (CommandHistory.size() < LongestHistory && IsSendable(line) && !CommandHistory.contains(line))
            CommandHistory.append(line);
    }
    QString last;
    CRegistry::Read(Section, CommandName, QString(), &last);
    return IsSendable(last) ? last : QString();
}

void CDlgCommand::SaveHistory() const
{
    const bool isKept = SaveCheck && SaveCheck->isChecked();
    CRegistry::Write(Section, EnableName, isKept ? 1 : 0, CRegistry::Flag);
    CRegistry::Write(Section, CommandsName, isKept ? ToText(CommandHistory) : QString());
    CRegistry::Write(Section, CommandName, isKept ? CommandHistory.value(0) : QString());
}

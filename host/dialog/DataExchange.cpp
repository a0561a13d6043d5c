#include "host/dialog/DataExchange.h"

#include "host/dialog/KivDialog.h"
#include "host/dialog/ThemedControls.h"
#include "host/text/Number.h"

namespace
{
void WriteNumber(CKivEdit* edit, const QString& text, int maxChars)
{
    const int length = qMax(maxChars, static_cast<int>(text.size()));
    if (edit->maxLength() != length)
        edit->setMaxLength(length); // it moves the caret to the end, even when nothing changes
    edit->SetText(text);
}
} // namespace

void DDX_Radio(CDataExchange* exchange, int firstId, int& value, int count)
{
    if (exchange->IsSaving())
        value = -1;
    for (int i = 0; i < count; ++i) {
        auto* radio = exchange->Dialog().Item<CKivRadioButton>(firstId + i);
        if (!radio)
            continue;
        if (!exchange->IsSaving()) {
            radio->setAutoExclusive(false); // the checked one of a group could not be unchecked
            radio->setChecked(i == value);
            radio->setAutoExclusive(true);
        } else if (radio->isChecked())
            value = i;
    }
}

void DDX_Int(CDataExchange* exchange, int id, int& value, int width, int maxChars)
{
    auto* edit = exchange->Dialog().Item<CKivEdit>(id);
    if (!edit)
        return;
    if (exchange->IsSaving())
        value = Number::FindLeadingInt(edit->text()).value_or(value);
    else
        WriteNumber(edit, Number::Format("%*d", width, value), maxChars);
}

void DDX_DoubleFmt(CDataExchange* exchange, int id, double& value, const char* format, int maxChars)
{
    auto* edit = exchange->Dialog().Item<CKivEdit>(id);
    if (!edit)
        return;
    if (exchange->IsSaving()) {
        value = Number::FindLeadingDouble(edit->text()).value_or(value);
        return;
    }
    WriteNumber(edit, Number::FormatUnchecked(format, value), maxChars);
}

void DDX_Check(CDataExchange* exchange, int id, int& value)
{
    auto* box = exchange->Dialog().Item<CKivCheckBox>(id);
    if (!box)
        return;
    if (exchange->IsSaving())
        value = box->isChecked() ? 1 : 0;
    else
        box->setChecked(value != 0);
}

void DDX_Text(CDataExchange* exchange, int id, QString& value)
{
    auto* edit = exchange->Dialog().Item<CKivEdit>(id);
    if (!edit)
        return;
    if (exchange->IsSaving())
        value = edit->text();
    else
        edit->SetText(value);
}

void DDX_CBIndex(CDataExchange* exchange, int id, int& index)
{
    auto* combo = exchange->Dialog().Item<CKivComboBox>(id);
    if (!combo)
        return;
    if (exchange->IsSaving())
        index = combo->currentIndex();
    else
        combo->setCurrentIndex(index);
}

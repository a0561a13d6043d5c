#include "host/dialog/DataExchange.h"

#include "host/dialog/KivDialog.h"
#include "host/dialog/ThemedControls.h"
#include "host/text/Number.h"

namespace
{
/// Moves a number between a member and its box. `find` reads a text's number, `format` writes one as the box shows it.
template <typename Value, typename Find, typename Format>
void ExchangeNumber(const CDataExchange& exchange, CKivEdit& edit, Value& value, Find find, Format format)
{
    const auto standing = find(edit.text());
    if (exchange.IsSaving()) {
        value = standing.value_or(value);
        edit.SetInForce(format(value));
    } else
        edit.ShowNumber(format(value), standing ? format(*standing) : QString());
}
} // namespace

void DDX_Radio(CDataExchange* exchange, int firstId, int& value, int count)
{
    if (!exchange->Takes(firstId))
        return;
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
    if (!edit || !exchange->Takes(id))
        return;
    edit->TakeNumbers(true, maxChars);
    ExchangeNumber(
        *exchange, *edit, value, [](const QString& text) { return Number::FindLeadingInt(text); },
        [width](int number) { return Number::Format("%*d", width, number); });
}

void DDX_DoubleFmt(CDataExchange* exchange, int id, double& value, const char* format, int maxChars)
{
    auto* edit = exchange->Dialog().Item<CKivEdit>(id);
    if (!edit || !exchange->Takes(id))
        return;
    edit->TakeNumbers(false, maxChars);
    ExchangeNumber(
        *exchange, *edit, value, [](const QString& text) { return Number::FindLeadingDouble(text); },
        [format](double number) { return Number::FormatUnchecked(format, number); });
}

void DDX_Check(CDataExchange* exchange, int id, int& value)
{
    auto* box = exchange->Dialog().Item<CKivCheckBox>(id);
    if (!box || !exchange->Takes(id))
        return;
    if (exchange->IsSaving())
        value = box->isChecked() ? 1 : 0;
    else
        box->setChecked(value != 0);
}

void DDX_Text(CDataExchange* exchange, int id, QString& value)
{
    auto* edit = exchange->Dialog().Item<CKivEdit>(id);
    if (!edit || !exchange->Takes(id))
        return;
    if (exchange->IsSaving())
        value = edit->text();
    else
        edit->SetText(value);
}

void DDX_CBIndex(CDataExchange* exchange, int id, int& index)
{
    auto* combo = exchange->Dialog().Item<CKivComboBox>(id);
    if (!combo || !exchange->Takes(id))
        return;
    if (exchange->IsSaving())
        index = combo->currentIndex();
    else
        combo->setCurrentIndex(index);
}

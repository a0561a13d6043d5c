#pragma once

#include <QString>

#include <optional>

class CKivDialog;

/// One transfer of all members of a dialog: from the controls into the members, or the other way.
class CDataExchange
{
public:
    CDataExchange(CKivDialog& dialog, bool saveAndValidate) : m_dialog(dialog), m_save(saveAndValidate) {}

    /// Whether the transfer goes from the controls into the members.
    [[nodiscard]] bool IsSaving() const { return m_save; }
    [[nodiscard]] CKivDialog& Dialog() const { return m_dialog; }

    /// Narrows the transfer to one control.
    void RestrictTo(int id) { m_onlyId = id; }
    [[nodiscard]] bool Takes(int id) const { return !m_onlyId || *m_onlyId == id; }

private:
    CKivDialog& m_dialog;
    bool m_save;
    std::optional<int> m_onlyId;
};

/// Index of the checked radio among `count` buttons with successive numbers; -1 for none.
void DDX_Radio(CDataExchange* exchange, int firstId, int& value, int count = 2);

/// A whole number. A text that begins with no number leaves the member as it is. `maxChars` is the longest text that
/// the user can type; values are written with at least `width` characters, and not over a text that the user is typing
/// and that means the same.
void DDX_Int(CDataExchange* exchange, int id, int& value, int width, int maxChars);

/// The same for a number written with a printf format.
void DDX_DoubleFmt(CDataExchange* exchange, int id, double& value, const char* format, int maxChars);

/// State of a check box, 0 or 1.
void DDX_Check(CDataExchange* exchange, int id, int& value);

/// Text of a box.
void DDX_Text(CDataExchange* exchange, int id, QString& value);

/// Index of the chosen entry of a drop-down list; -1 for none, which is also what an index outside the list chooses.
void DDX_CBIndex(CDataExchange* exchange, int id, int& index);

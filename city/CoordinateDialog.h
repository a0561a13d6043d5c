#pragma once

#include "city/core/CoordinateBlock.h"
#include "host/dialog/KivDialog.h"
#include "module/kivobs_export.h"
#include "obs/core/EntryRules.h"

/// A dialog that shows the position of a place: it binds the coordinate block to the boxes of its template and lets
/// the rules of its owner watch over them. The city list and the place editor are such dialogs.
class KIVOBS_EXPORT CCoordinateDialog : public CKivDialog
{
    Q_OBJECT

public:
    /// The position shown; what the caller puts in stands there when the dialog opens.
    CoordinateBlock Coordinates;

protected:
    CCoordinateDialog(int templateNumber, const QString& registrySection, EntryRules::Policy policy, QWidget* parent);

    MessageMap GetMessageMap() override;
    void DoDataExchange(CDataExchange* exchange) override;

private:
    /// OnChangeSetObsEditLong1 to OnChangeSetObsEditTzMin, in the editor OnChangeEditCityEditLong1 to ...EditMin.
    void OnChangeSetObsEdit(EntryRules::Box box);
    /// OnDeltaposSetObsSpinLong1 to OnDeltaposSetObsSpinTzMin.
    void OnDeltaposSetObsSpin(EntryRules::Box box, int delta);
    /// OnClickedSetObsRadioEast, ...West, ...North, ...South, ...Plus and ...Minus.
    void OnClickedSetObsRadio() { UpdateData(); }

    [[nodiscard]] EntryRules::Entered Entered() { return {Coordinates, Coordinates.Altitude}; }

    EntryRules::Policy m_policy;
};

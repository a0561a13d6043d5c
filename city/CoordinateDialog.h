#pragma once

#include "city/core/CoordinateBlock.h"
#include "city/core/PlaceEntryRules.h"
#include "host/dialog/KivDialog.h"
#include "module/kivobs_export.h"

/// A dialog that shows the position of a place: it binds the coordinate block to the boxes of its template and lets
/// the rules of its owner watch over them. The city list and the place editor are such dialogs.
class KIVOBS_EXPORT CCoordinateDialog : public CKivDialog
{
    Q_OBJECT

public:
    /// The position shown; what the caller puts in stands there when the dialog opens.
    CoordinateBlock Coordinates;

protected:
    CCoordinateDialog(int templateNumber, const QString& registrySection, PlaceEntryRules::Owner owner,
                      QWidget* parent);

    MessageMap GetMessageMap() override;
    void DoDataExchange(CDataExchange* exchange) override;

private:
    /// OnChangeSetObsEditLong1 to OnChangeSetObsEditTzMin, in the editor OnChangeEditCityEditLong1 to ...EditMin.
    void OnChangeSetObsEdit(PlaceEntryRules::Box box);
    /// OnDeltaposSetObsSpinLong1 to OnDeltaposSetObsSpinTzMin.
    void OnDeltaposSetObsSpin(PlaceEntryRules::Box box, int delta);
    /// OnClickedSetObsRadioEast, ...West, ...North, ...South, ...Plus and ...Minus.
    void OnClickedSetObsRadio() { UpdateData(); }

    PlaceEntryRules::Owner m_owner;
};

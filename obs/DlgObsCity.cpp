// Picking a place from the city list.

#include "city/DlgCity.h"
#include "host/dialog/HostMessage.h"
#include "host/observer/KPDateObs.h"
#include "host/system/CommonFile.h"
#include "obs/DlgObs.h"
#include "obs/SiteEntry.h"
#include "obs/SiteMaps.h"
#include "obs/core/EngineLines.h"
#include "obs/core/SiteModel.h"

using namespace Qt::StringLiterals;

void CDlgObs::OnObsBtnCity()
{
    CPlacePaths paths = CPlacePaths::InFolder(DataFolder);
    if (!CCommonFile::DoesFileExist(paths.ListFilePath))
        paths.ListFilePath = CPlacePaths::InFolder(CCommonFile::GetModulePath()).ListFilePath;
    if (!CCommonFile::DoesFileExist(paths.ListFilePath)) {
        MessageBox(u"観測地ファイルが見つかりません。"_s);
        return;
    }
    CDlgCity dialog(&Maps->Engine(), this);
    dialog.SetMesh(Model->LandscapeIndexFile.isEmpty() ? 0 : 1);
    dialog.Paths = paths;
    dialog.SetCorMapPtr(&Maps->Globe());
    // The button is enabled on the Earth only, where the altitude is in metres.
    static_cast<CoordinateFields&>(dialog.Coordinates) = Model->Fields;
    dialog.Coordinates.Altitude = Model->Fields.AltitudeValue;
    if (Model->ShowsOtherOffset()) // a place has a zone, whatever time system is shown
        SiteLocationFormat::SplitTimeZone(Model->EditToTz(), dialog.Coordinates);

    HostWindow::Send(HostWindow::Main(), HostWindow::MessageModalLoop, 1);
    const int result = dialog.DoModal();
    HostWindow::Send(HostWindow::Main(), HostWindow::MessageModalLoop, 0);
    if (result == Accepted)
        TakePlace(dialog);
}

void CDlgObs::TakePlace(const CDlgCity& dialog)
{
    static_cast<CoordinateFields&>(Model->Fields) = dialog.Coordinates;
    Model->OwnZone(); // the zone is the place's now
    Model->Fields.AltitudeValue = dialog.Coordinates.Altitude;
    if (dialog.IsInitialSet != 0)
        SaveDefault(dialog.InitialLongitude, dialog.InitialLatitude, dialog.InitialAltitude, dialog.InitialTimeZone);
    UpdateData(false);
    if (!Model->LandscapeIndexFile.isEmpty() && dialog.IsAltitudeFromTerrain == 0) {
        DoitBool(QString::fromUtf16(EngineLines::AutoGetAltitude), 0);
        Model->Fields.AltitudeMode = 1;
        UpdateData(false);
        UpdateStatus();
    }
    Entry->UpdateValue();
}

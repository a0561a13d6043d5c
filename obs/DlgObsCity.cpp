// Picking a place from the city list.

#include "city/DlgCity.h"
#include "host/dialog/HostMessage.h"
#include "host/observer/KPDateObs.h"
#include "host/system/CommonFile.h"
#include "obs/DlgObs.h"
#include "obs/core/EngineLines.h"

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
    CDlgCity dialog(&EmbeddedEngine, this);
    dialog.SetMesh(LandscapeIndexFile.isEmpty() ? 0 : 1);
    dialog.Paths = paths;
    dialog.SetCorMapPtr(&GlobeMap);
    // The button is enabled on the Earth only, where the altitude is in metres.
    static_cast<CoordinateFields&>(dialog.Coordinates) = Fields;
    dialog.Coordinates.Altitude = Fields.AltitudeValue;
    if (ShowsOffset && DateObs) // a place has a zone, whatever time system is shown
        SiteLocationFormat::SplitTimeZone(DateObs->GetUserTz(), dialog.Coordinates);

    HostWindow::Send(HostWindow::Main(), HostWindow::MessageModalLoop, 1);
    const int result = dialog.DoModal();
    HostWindow::Send(HostWindow::Main(), HostWindow::MessageModalLoop, 0);
    if (result == Accepted)
        TakePlace(dialog);
}

void CDlgObs::TakePlace(const CDlgCity& dialog)
{
    static_cast<CoordinateFields&>(Fields) = dialog.Coordinates;
    ShowsOffset = false; // the zone is the place's now
    Fields.AltitudeValue = dialog.Coordinates.Altitude;
    if (dialog.IsInitialSet != 0)
        SaveDefault(dialog.InitialLongitude, dialog.InitialLatitude, dialog.InitialAltitude, dialog.InitialTimeZone);
    UpdateData(false);
    if (!LandscapeIndexFile.isEmpty() && dialog.IsAltitudeFromTerrain == 0) {
        DoitBool(QString::fromUtf16(EngineLines::AutoGetAltitude), 0);
        Fields.AltitudeMode = 1;
        UpdateData(false);
        UpdateStatus();
    }
    UpdateValue();
}

#pragma once

#include "host/control_window/CorMpp.h"
#include "host/dialog/KivDialog.h"
#include "module/kivobs_export.h"
#include "roadmap/core/ScaleTable.h"
#include "roadmap/core/SitePosition.h"

#include <QRect>
#include <QSize>

#include <memory>

class CDlgMappleFind;
class CKivSlider;
class CKPDateObs;

/// The road-map dialog "スーパーマップル・デジタル": a detailed map of Japan with the observation site marked on it. A
/// click on the map, or a match of its search window, becomes the observer's location: through the observer object, or
/// through a line to the host engine when there is none.
///
/// The host constructs it, sets what it likes and calls Create, which shows the window; closing destroys the window.
/// Neither the observer object nor the engine is owned.
class KIVOBS_EXPORT CDlgMapple final : public CKivDialog
{
    Q_OBJECT

public:
    explicit CDlgMapple(QWidget* parent);
    ~CDlgMapple() override; ///< destroys a window that is still there

    /// Creates and shows the window, with a map when the map's data are installed. 1 on success; 0 when the window
    /// exists already or the map cannot be made, which is reported to the user.
    int Create(CCorKiv* hostEngine);

    /// To be called before Create; the object must outlive the dialog. Null for none.
    void SetKPDateObs(CKPDateObs* obsData) { ObsData = obsData; }

    /// Non-zero offers the button that loads a file into the map; to be called before Create.
    void SetReadFile(int readFile) { ReadFile = readFile; }

    /// Moves the mark to the observer's place on the Earth; nothing happens without an observer object.
    void UpdateSelectPosition();

    /// Whether a change of the observer that the host hears of just now comes from this dialog's own map or search.
    [[nodiscard]] bool IsPicking() const { return Picking; }

    void OnBnClickedCenter();
    void OnBnClickedFind();
    void OnBnClickedRead();

    /// The dialog's map and search window, for a host that logs or inspects them; the window is null when there is
    /// none.
    [[nodiscard]] CCorMpp& MapOfDialog() { return MapCtrl; }
    [[nodiscard]] CDlgMappleFind* FindOfDialog() const { return FindDlg.get(); }

protected:
    MessageMap GetMessageMap() override;
    EventSinkMap GetEventSinkMap() override;
    void OnOK() override;
    void OnCancel() override;
    void OnClose() override;
    void OnDestroy() override;
    bool PreTranslateMessage(QKeyEvent& key) override;

    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

    void OnMouseUpMap(double latitude, double longitude); ///< degrees
    void OnFindLandMarkResult(long status);
    void OnFindAddressKeyResult(long status);
    /// Takes a match as the site; `position` holds x and y in milliseconds of arc. Returns 0.
    long OnFindSelectPos(unsigned parameter, const double* position);

    void UpdateSelectPosDisplay(double latitude, double longitude); ///< degrees
    void DeleteMappleAndFind();

private:
    void AttachControls();
    void PlaceMap();
    [[nodiscard]] bool SetUp();
    [[nodiscard]] bool CreateMap();
    void CreateFind();
    void SetUpZoom();
    void PlaceMark();
    void OnVScroll();
    /// The site as known at creation; none when the engine's answer has none.
    [[nodiscard]] std::optional<SitePosition> FindSite() const;
    void TakePickedSite(const SitePosition& site, const QString& engineLine);

    CKPDateObs* ObsData = nullptr;
    int ReadFile = 0;
    CCorMpp MapCtrl;
    int MapCreated = 0;
    std::unique_ptr<CDlgMappleFind> FindDlg;
    int FindCreated = 0;
    int ZoomIndex = ScaleTable::DefaultIndex;
    QRect MapRect;                    ///< where the map is placed at creation
    QSize CreatedSize;                ///< of the client area then
    CKivSlider* ZoomSlider = nullptr; ///< a child of this
    bool SetUpDone = false;           ///< there is a zoom to keep
    bool Picking = false;
};

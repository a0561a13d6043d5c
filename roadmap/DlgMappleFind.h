#pragma once

#include "host/dialog/KivDialog.h"
#include "host/system/CurrentDirectory.h"
#include "roadmap/ResultTable.h"

class CCorMpp;
class CKivEdit;
class CKivListCtrl;

/// The road map's search window "スーパーマップル・デジタル検索". It starts a search on the map, lists the matches when
/// the map reports the end, moves the map to a match and hands a match to its owner as the observation site. Closing
/// only hides it; its owner, the road-map dialog, shows it and ends it.
class CDlgMappleFind final : public CKivDialog
{
    Q_OBJECT

public:
    explicit CDlgMappleFind(QWidget& owner);
    ~CDlgMappleFind() override;

    /// To be called before Create; not owned, must outlive this window. Null for none.
    void SetMapCtrl(CCorMpp* map) { MapCtrl = map; }

    /// Creates the window, hidden. 1 on success, 0 when it exists already.
    int Create(CCorKiv* hostEngine);

    /// A search of the map ended: 0 and 2 when it ran to its end, any other status when it was cancelled.
    void OnAddressKeyResult(long status) { OnSearchEnd(SearchRule::AddressKey, status); }
    void OnLandMarkResult(long status) { OnSearchEnd(SearchRule::LandMark, status); }

protected:
    MessageMap GetMessageMap() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override;
    void OnCancel() override;
    void OnClose() override;
    void OnDestroy() override;
    bool PreTranslateMessage(QKeyEvent& key) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void PlaceBesideOwner();
    void AttachControls();
    void OnBnClickedSearch();
    void OnBnClickedMoveMap() { MoveToSelection(false); }
    void OnBnClickedSetObs() { MoveToSelection(true); }
    void OnDblclkResultList(int row);
    void OnSearchEnd(SearchRule rule, long status);
    void EndSearch(bool hasResults, const QString& message);
    void ShowResults(const SearchOutcome& outcome, const std::vector<CRoadMapResult>& rows);
    bool MoveToSelection(bool setAsSite);
    void DisableControls();
    void EnableControls() { EnableSearchControls(true); }
    void EnableSearchControls(bool enable);
    void ClearResultList();
    /// The match of a row in the list of the last search; null when the map, the list or the row is gone.
    [[nodiscard]] const CRoadMapResult* FindResult(int row) const;

    QString SearchChar;
    int Rule = 0;
    int Searching = 0;
    int HasResults = 0;
    bool IsEnding = false; ///< the painting that ends a search is under way
    QWidget& Owner;
    qint64 Results = 0; ///< number of the map's list, for CRoadMapResults::Find; the list may be gone
    CCorMpp* MapCtrl = nullptr;
    CCurrentDirectory Directory; ///< the module's folder while a search runs
    CResultTable ResultTable;
    CKivListCtrl* ResultList = nullptr; ///< children of this
    CKivEdit* SearchEdit = nullptr;
};

#pragma once

#include "host/control/RoadMapResults.h"
#include "host/control_window/CorKiv.h"
#include "host/observer/KPDateObs.h"
#include "roadmap/ControlIds.h"
#include "roadmap/DlgMapple.h"
#include "roadmap/DlgMappleFind.h"
#include "tests/dialog/DialogDriver.h"

/// The road-map dialogs among doubles: tag R is the road map, H the host's engine, O a change of the observer object
/// (body, longitude, latitude, altitude). The map's data are installed, and the pause is switched off.
class CMappleFixture : public CDialogDriver
{
protected:
    CMappleFixture();
    ~CMappleFixture() override;

    /// Records that the map's data are not on this machine.
    void RemoveData();

    void MakeDialog(bool withObserver = true);
    /// Creates the dialog, waits until it is on screen and forgets the transcript of that.
    void Open(bool withObserver = true);
    void OpenFind();
    void WaitForFind();
    [[nodiscard]] CDlgMappleFind& Find() const { return *Dialog->FindOfDialog(); }
    /// Raises an event of the map.
    void Raise(int event, const QVariantList& arguments) const { Map.Control->Raise(event, arguments); }
    /// Makes rows the map's result list; each is "name|address|small|middle|large" and lies at x = 1000 times its
    /// index and y = 500 times it.
    void GiveResults(const QStringList& rows);

    [[nodiscard]] CKivDialog* Shown() const override { return Dialog.get(); }
    template <typename Control = QWidget> Control* FindItem(int id) { return Find().Item<Control>(id); }
    [[nodiscard]] std::string SiteText() { return TextOf(MappleId::TextSite); }

    QString WorkingFolder; ///< of the process, before anything is opened
    CTranscript Transcript;
    ControlScript Map;
    ControlScript Host;
    QWidget MainWindow;
    CCorKiv HostEngine;
    CKPDateObs Observer;
    std::unique_ptr<CRoadMapResults> Results;
    std::unique_ptr<CDlgMapple> Dialog;
};

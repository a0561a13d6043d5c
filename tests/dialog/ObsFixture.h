#pragma once

#include "host/control_window/CorKiv.h"
#include "host/control_window/CorKivMap.h"
#include "host/observer/KPDateObs.h"
#include "obs/ControlIds.h"
#include "obs/DlgObs.h"
#include "tests/dialog/DialogDriver.h"

/// The site dialog among doubles: tag E is the embedded engine, H the host's, M the globe map; O a change of the
/// observer object, with longitude, latitude, altitude and time zone. Settings and data lie in a temporary folder.
class CObsFixture : public CDialogDriver
{
protected:
    CObsFixture();
    ~CObsFixture() override;

    /// Shows the dialog, "terrain" with a terrain index, and forgets the transcript of that.
    void Open(bool terrain = false);
    /// Moves the observer to another body from outside, as a host does it.
    void StandOn(int body);
    /// What a host does that follows its observer object: refills the dialog after each change.
    void FollowObserver() { m_follows = true; }

    template <typename Control = QWidget> Control* Item(int id) { return Dialog->Item<Control>(id); }
    [[nodiscard]] std::string TextOf(int id) const { return CDialogDriver::TextOf(*Dialog, id); }
    void Click(int id) { CDialogDriver::Click(Item(id)); }
    /// Types over what a box holds, key by key; the transcript begins before the last key.
    void Type(int id, const char* text);
    void Paste(int id, const char* text) { CDialogDriver::Paste(*Dialog, id, QString::fromUtf8(text)); }
    void ClickSpin(int id, bool up) { CDialogDriver::ClickSpin(*Dialog, id, up); }
    void Wheel(QPoint dialogPoint, int delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        CDialogDriver::Wheel(*Dialog, dialogPoint, delta, modifiers);
    }
    [[nodiscard]] QPoint MapMiddle() { return Dialog->MapOfDialog().geometry().center(); }
    /// Degrees, minutes, seconds, hemispheres: "E 139 41 30.4 N 35 41 21.2".
    [[nodiscard]] std::string Fields();

    CTranscript Transcript;
    ControlScript Embedded;
    ControlScript Host;
    ControlScript Map;
    QStringList Messages;
    CMessageReceiver MainWindow;
    CMessageReceiver Parent;
    CCorKiv HostEngine;
    CKPDateObs Observer;
    std::unique_ptr<CDlgObs> Dialog;
    QString TerrainPath;

private:
    bool m_follows = false;
};

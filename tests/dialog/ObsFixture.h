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

    [[nodiscard]] CKivDialog* Shown() const override { return Dialog.get(); }
    /// Types over what a box holds, key by key; the transcript begins before the last key.
    void Type(int id, const char* text);
    void Wheel(QPoint dialogPoint, int delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        CDialogDriver::Wheel(*Dialog, dialogPoint, delta, modifiers);
    }
    [[nodiscard]] QPoint MapMiddle() { return Dialog->MapOfDialog().geometry().center(); }

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

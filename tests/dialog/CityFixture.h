#pragma once

#include "city/ControlIds.h"
#include "city/DlgCity.h"
#include "host/dialog/KivTreeCtrl.h"
#include "tests/dialog/DialogDriver.h"

/// The city list on a small shipped list among doubles: tag E is its engine, M the globe map. The files lie in a
/// temporary folder. The list, with the places' longitudes:
///   場所 > 日本 > 関東 > 東京 139.75, 横浜 139.5; 東北 > 仙台 140.5; 富士山 138.5
///        > 海外 > Paris 2.5, London -0.5
class CCityFixture : public CDialogDriver
{
protected:
    CCityFixture();
    ~CCityFixture() override;

    /// Runs the dialog and the steps inside its modal loop; a dialog that the steps leave open is cancelled.
    int Run(const std::function<void()>& steps);
    [[nodiscard]] CKivDialog* Shown() const override { return Dialog.get(); }
    /// Presses keys one after the other where the focus is: "Alt+Up F2 Ctrl+Z".
    static void Keys(const char* keys);
    /// Expects a question whether to do what cannot be undone outside.
    void Asks(const char* text, IPrompts::Answer answer = IPrompts::Answer::Ok)
    {
        Prompts.Expect(text, IPrompts::Icon::Warning, IPrompts::Buttons::OkCancel, answer);
    }
    /// A fresh dialog on the same files.
    void Renew();
    /// Puts an overlay that deletes a folder below the root, or the root itself.
    void PutDeletion(const char* folder) const;
    /// Enabled of the buttons edit, add, delete and save as initial, as letters.
    [[nodiscard]] std::string Enabled() const;

    /// The item at a path of names below the root, "日本/関東"; the root for an empty one.
    [[nodiscard]] QModelIndex At(const char* path) const;
    void Select(const char* path);
    [[nodiscard]] std::string Selected() const;
    /// The tree below the root: "日本(関東(東京 横浜) 東北(仙台) 富士山) 海外(Paris London)".
    [[nodiscard]] std::string TreeText() const;
    /// Drags an item and lets it go over another one, with real mouse events of the window.
    void Drag(const char* from, const char* to, bool cancel = false);
    void Mouse(QEvent::Type type, QPoint dialogPoint, Qt::MouseButton button, Qt::MouseButtons buttons);
    [[nodiscard]] QPoint PointOf(const char* path) const;

    void WriteFile(const char* name, const QByteArray& bytes) const { ::WriteFile(PathOf(name), bytes); }
    [[nodiscard]] QByteArray ReadFile(const char* name) const { return ::ReadFile(PathOf(name)); }
    [[nodiscard]] QString PathOf(const char* name) const { return Folder.filePath(QString::fromUtf8(name)); }

    CTranscript Transcript;
    ControlScript EngineScript{QStringLiteral("E"), Transcript};
    ControlScript MapScript{QStringLiteral("M"), Transcript};
    QStringList Messages;
    CMessageReceiver MainWindow{QStringLiteral("main"), Messages};
    CCorKiv Engine;
    CCorKivMap Map;
    std::unique_ptr<CDlgCity> Dialog;
};

#pragma once

#include <QStringList>

#include <memory>

class QWidget;

// The pages and dialogs of the assistant in their main states, in the test world. A page is reached
// the way a person reaches it, but for the cloud page, to which none leads; a dialog is shown
// alone.
namespace Scenes {

// What the user sees of the domain and of the Mac; the default is that of docs/images.
struct Setting {
    QByteArray domain = "ad.example.com";
    QByteArray zone = "MacZone";
    QByteArray computer = "mac-0142";
};

class Scene
{
public:
    virtual ~Scene() = default;
    // The page's wizard, or the dialog; visible and laid out.
    virtual QWidget* window() const = 0;
    // What differs from scene to scene: the wizard's current page, or the dialog.
    virtual QWidget* content() const
    {
        return window();
    }
};

// The pages in the wizard's order, then the dialogs; without the world's tools, only the dialogs
// that run none.
QStringList names();
// Puts the world into the scene's state and opens it.
std::unique_ptr<Scene> open(const QString& name, const Setting& setting = {});

} // namespace Scenes

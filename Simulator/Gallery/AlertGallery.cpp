#include "PGAlertController/Source/PGAlertController.h"
#include "Platform/Linux/Device.h"
#include "Platform/UIKit/Windows.h"
#include "Simulator/Gallery/Exhibits.h"
#include "Simulator/Gallery/Gallery.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace simulator {
namespace {

using purgo::PGAlertAction;
using purgo::PGAlertController;

/// Objects that are watched, not owned, to see whether they go.
using Watched = std::set<std::weak_ptr<void>, std::owner_less<>>;

/// What an exhibit is shown from.
struct Stage {
    std::shared_ptr<platform::UIWindow> window;
    std::shared_ptr<platform::UIViewController> viewController;
    std::shared_ptr<platform::Object> control;
    platform::CGRect rect = purgo::kPGACInvalidRect;
};

std::shared_ptr<platform::Object> controlFor(ShownFrom from) {
    const auto screen = platform::mainScreenBounds();
    const auto bar = [&screen](platform::CGFloat height) {
        return platform::CGRect{0, screen.height - height, screen.width, height};
    };
    switch (from) {
    case ShownFrom::view:
        return std::make_shared<platform::UIView>(platform::CGRect{20, 100, 120, 40});
    case ShownFrom::barButtonItem:
        return std::make_shared<platform::UIBarButtonItem>();
    case ShownFrom::toolbar:
        return std::make_shared<platform::UIToolbar>(bar(44));
    case ShownFrom::tabBar:
        return std::make_shared<platform::UITabBar>(bar(49));
    case ShownFrom::nothing:
    case ShownFrom::viewController:
    case ShownFrom::rectangle:
        break;
    }
    return nullptr;
}

Stage makeStage(ShownFrom from) {
    Stage stage;
    if (from == ShownFrom::nothing)
        return stage;
    stage.viewController = platform::UIViewController::make();
    stage.window = platform::UIWindow::make(platform::mainScreenBounds());
    stage.window->setRootViewController(stage.viewController);
    stage.window->makeKeyAndVisible();
    stage.control = controlFor(from);
    if (from == ShownFrom::rectangle)
        stage.rect = {40, 60, 80, 20};
    return stage;
}

std::shared_ptr<PGAlertController> makeAlert(const Exhibit& exhibit,
                                             const Gallery::Chosen& chosen) {
    auto alert = PGAlertController::alertControllerWithTitle(exhibit.name, exhibit.description,
                                                             exhibit.style);
    for (const auto& each : exhibit.actions) {
        const auto action = PGAlertAction::actionWithTitle(
            each.title, each.style,
            [chosen, title = each.title](purgo::PGAlertActionProtocol&) { chosen(title); });
        action->setAutoDismissFlag(each.autoDismissFlag);
        alert->addAction(action);
    }
    if (exhibit.hasTextField)
        alert->showTextFieldWithConfigurationHandler(
            [](platform::UITextField& field) { field.setPlaceholder("Name"); });
    alert->setAutoDismissTimeout(exhibit.seconds);
    return alert;
}

Watched onScreen() {
    const auto& screen = platform::Device::current().screen();
    const auto alerts = screen.alerts();
    const auto windows = screen.windows();
    Watched objects(alerts.begin(), alerts.end());
    objects.insert(windows.begin(), windows.end());
    return objects;
}

class AlertGallery : public Gallery {
public:
    std::vector<Listing> exhibits() const override {
        std::vector<Listing> listings;
        for (const auto& exhibit : allExhibits())
            listings.push_back({exhibit.name, exhibit.description, aliveOf(exhibit.name)});
        return listings;
    }

    bool isAvailable(AlertBackend backend) const override {
        return backend == AlertBackend::view || purgo::hasControllerBackend();
    }

    bool show(const std::string& name, AlertBackend backend, const Chosen& chosen) override {
        const auto& all = allExhibits();
        const auto exhibit = std::find_if(all.begin(), all.end(),
                                          [&name](const auto& each) { return each.name == name; });
        if (exhibit == all.end())
            return false;
        PGAlertController::setForceViewAPI(backend == AlertBackend::view);
        PGAlertController::setCountdownPlaceholder(exhibitPlaceholder);
        const auto before = onScreen();
        const auto stage = makeStage(exhibit->from);
        const auto alert = makeAlert(*exhibit, chosen);
        // The alert owns the stage as long as it needs it, and does nothing else with it.
        alert->setDidDismissBlock([stage] {});
        alert->showInViewController(stage.viewController, stage.control, stage.rect);
        watch(*exhibit, alert, before);
        return true;
    }

private:
    /// Watches an alert that was shown, and all that was not on the screen before it.
    void watch(const Exhibit& exhibit, const std::shared_ptr<PGAlertController>& alert,
               const Watched& before) {
        auto& watched = watched_[exhibit.name];
        std::erase_if(watched, [](const auto& object) { return object.expired(); });
        watched.insert(alert);
        const auto actions = alert->actions();
        watched.insert(actions.begin(), actions.end());
        for (const auto& object : onScreen())
            if (!before.contains(object))
                watched.insert(object);
    }

    std::size_t aliveOf(const std::string& name) const {
        const auto found = watched_.find(name);
        if (found == watched_.end())
            return 0;
        const auto alive = std::count_if(found->second.begin(), found->second.end(),
                                         [](const auto& object) { return !object.expired(); });
        return static_cast<std::size_t>(alive);
    }

    std::map<std::string, Watched> watched_; // by the names of the exhibits
};

// The class is known from the moment in which the library has been opened.
[[gnu::constructor]] void addClass() {
    platform::Device::current().classes().add(galleryClassName, std::make_shared<AlertGallery>());
}

} // namespace
} // namespace simulator

#include "view/views.h"

#include "dg/messages.h"

#include <algorithm>

namespace host {
namespace {

struct ViewList {
    std::vector<View> views;
    unsigned int active = 0;
    unsigned int nextId = 1;
    bool userChanging = false;
};

ViewList& list()
{
    static ViewList* views = new ViewList(); // lives for the process, like the scene
    return *views;
}

void prune()
{
    ViewList& l = list();
    auto gone = [](const View& v) { return !v.camera || !v.camera->isAlive; };
    l.views.erase(std::remove_if(l.views.begin(), l.views.end(), gone), l.views.end());
    const bool activeLives = std::any_of(l.views.begin(), l.views.end(),
                                         [&](const View& v) { return v.id == l.active; });
    if (!activeLives)
        l.active = l.views.empty() ? 0 : l.views.front().id;
}

} // namespace

const std::vector<View>& liveViews()
{
    prune();
    return list().views;
}

View* findView(unsigned int id)
{
    prune();
    for (View& v : list().views)
        if (v.id == id)
            return &v;
    return nullptr;
}

View* activeViewState()
{
    prune();
    return list().active ? findView(list().active) : nullptr;
}

View* viewOrActive(unsigned int id) { return id ? findView(id) : activeViewState(); }

View& addView(int width, int height, NodePtr camera)
{
    prune();
    ViewList& l = list();
    View v;
    v.id = l.nextId++;
    v.width = width;
    v.height = height;
    v.camera = std::move(camera);
    l.views.push_back(std::move(v));
    if (!l.active)
        l.active = l.views.back().id;
    return l.views.back();
}

bool makeViewActive(unsigned int id)
{
    if (!findView(id))
        return false;
    if (list().active != id) {
        list().active = id;
        // Overlays drawn for one view must be drawn again for another.
        sendEvent("ActiveViewChanged");
        sendEvent("modelEditorChanged");
    }
    return true;
}

bool dropView(unsigned int id)
{
    ViewList& l = list();
    auto it = std::find_if(l.views.begin(), l.views.end(), [&](const View& v) { return v.id == id; });
    if (it == l.views.end())
        return false;
    l.views.erase(it);
    prune();
    return true;
}

bool viewProjection(const View& view, ViewProjection& out)
{
    return makeProjection(view.camera.get(), view.width, view.height, out);
}

bool userChangingView() { return list().userChanging; }

void setUserChangingViewFlag(bool changing) { list().userChanging = changing; }

} // namespace host

#pragma once
// The host's 3-D views: each has an id (from 1, never reused), a port size and a camera
// shape; one of them is active. A view whose camera has been deleted is dropped the next
// time the views are looked at, so a new scene leaves no views behind.

#include "dg/nodeBody.h"
#include "view/viewProjection.h"

#include <maya/M3dView.h>

#include <vector>

namespace host {

struct View {
    unsigned int id = 0;
    int width = 0;
    int height = 0;
    NodePtr camera; // the camera shape
    unsigned int refreshes = 0;
};

// The live views in the order they were made.
const std::vector<View>& liveViews();
View* findView(unsigned int id);
// The active view, or null when there is none.
View* activeViewState();
// The view with that id, or the active view for 0.
View* viewOrActive(unsigned int id);

View& addView(int width, int height, NodePtr camera);
bool makeViewActive(unsigned int id);
bool dropView(unsigned int id);

bool viewProjection(const View& view, ViewProjection& out);

// What MFrameContext::userChangingViewContext reports.
bool userChangingView();
void setUserChangingViewFlag(bool changing);

// The door into M3dView's view id.
class ViewAccess {
public:
    static unsigned int id(const M3dView& view) { return view.fViewId; }
    static M3dView make(unsigned int id)
    {
        M3dView v;
        v.fViewId = id;
        return v;
    }
};

} // namespace host

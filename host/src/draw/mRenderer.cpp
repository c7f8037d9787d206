#include <maya/MViewport2Renderer.h>

#include "dg/access.h"
#include "draw/drawOverrides.h"

namespace MHWRender {

MRenderer::MRenderer() = default;
MRenderer::~MRenderer() = default;

MRenderer* MRenderer::theRenderer(bool /*initializeRenderer*/)
{
    static MRenderer* renderer = new MRenderer(); // lives for the process, as Maya's does
    return renderer;
}

DrawAPI MRenderer::drawAPI() const { return kOpenGLCoreProfile; }

bool MRenderer::drawAPIIsOpenGL() const { return true; }

void MRenderer::setGeometryDrawDirty(MObject obj, bool /*topologyChanged*/)
{
    // An object that is not a live node has no override to update; Maya ignores it too.
    if (host::NodeBody* node = host::Access::node(obj))
        host::markDrawDirty(node);
}

} // namespace MHWRender

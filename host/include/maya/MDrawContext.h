#pragma once
// MHWRender::MDrawContext: the frame context at draw time. The host draws no geometry
// through a device, so its draw context answers as its frame context does.

#include <maya/MFrameContext.h>

namespace MHWRender {

class MDrawContext : public MFrameContext {
public:
    MMatrix getMatrix(MFrameContext::MatrixType mtype, MStatus* ReturnStatus = nullptr) const override;
    MDoubleArray getTuple(MFrameContext::TupleType ttype, MStatus* ReturnStatus = nullptr) const override;
    MStatus getViewportDimensions(int& originX, int& originY, int& width, int& height) const override;

    MStatus getRenderTargetSize(int& width, int& height) const;

    static const char* className();

protected:
    MDrawContext();
    ~MDrawContext() override;
};

} // namespace MHWRender

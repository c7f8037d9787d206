#pragma once
// Data objects: what flows through typed and generic plugs. A data body shares its payload
// copy-on-write: reading a plug hands out a new body over the same payload, and the first
// write through a function set detaches it, so copies through plugs cost nothing until
// one side changes.

#include "dg/objectBody.h"

#include <maya/MFnData.h>

#include <memory>

namespace host {

class DataBody : public ObjectBody {
public:
    virtual MFnData::Type dataType() const = 0;
    // A new body that shares this one's payload.
    virtual std::shared_ptr<DataBody> share() const = 0;
};

template <class Payload, MFn::Type kApiType, MFnData::Type kDataType>
class TypedDataBody : public DataBody {
public:
    TypedDataBody() : fPayload(std::make_shared<Payload>()) {}
    explicit TypedDataBody(std::shared_ptr<Payload> payload) : fPayload(std::move(payload)) {}

    MFn::Type apiType() const override { return kApiType; }
    MFnData::Type dataType() const override { return kDataType; }
    std::shared_ptr<DataBody> share() const override
    {
        return std::make_shared<TypedDataBody>(fPayload);
    }

    const Payload& read() const { return *fPayload; }
    Payload& write()
    {
        if (fPayload.use_count() > 1)
            fPayload = std::make_shared<Payload>(*fPayload);
        return *fPayload;
    }

private:
    std::shared_ptr<Payload> fPayload;
};

} // namespace host

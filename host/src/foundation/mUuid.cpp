#include <maya/MUuid.h>

#include <maya/MString.h>

#include <algorithm>
#include <cstring>
#include <mutex>
#include <random>

namespace {

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

bool isDashPosition(int i) { return i == 8 || i == 13 || i == 18 || i == 23; }

// One generator for the process, seeded from the system's entropy source.
std::mt19937_64& generator()
{
    static std::mt19937_64 engine = [] {
        std::random_device device;
        std::seed_seq seed{device(), device(), device(), device(), device(), device(), device(), device()};
        return std::mt19937_64(seed);
    }();
    return engine;
}

std::mutex& generatorMutex()
{
    static std::mutex mutex;
    return mutex;
}

} // namespace

MUuid::MUuid()
    : fBytes{}
    , fValid(false)
{
}

MUuid::MUuid(const MUuid& other) = default;

MUuid::MUuid(const unsigned int* uuid)
    : MUuid()
{
    if (uuid == nullptr)
        return;
    for (int word = 0; word < 4; ++word)
        for (int byte = 0; byte < 4; ++byte)
            fBytes[word * 4 + byte] = static_cast<unsigned char>(uuid[word] >> (24 - 8 * byte));
    fValid = true;
}

MUuid::MUuid(const unsigned char* uuid)
    : MUuid()
{
    if (uuid == nullptr)
        return;
    std::memcpy(fBytes, uuid, sizeof fBytes);
    fValid = true;
}

MUuid::MUuid(const MString& value, MStatus* ReturnStatus)
    : MUuid()
{
    int size = 0;
    const char* text = value.asChar(size);
    bool ok = size == 36;
    unsigned char bytes[16] = {};
    int next = 0;
    for (int i = 0; ok && i < 36; ++i) {
        if (isDashPosition(i)) {
            ok = text[i] == '-';
            continue;
        }
        const int high = hexValue(text[i]);
        const int low = i + 1 < 36 ? hexValue(text[i + 1]) : -1;
        ok = high >= 0 && low >= 0;
        if (ok)
            bytes[next++] = static_cast<unsigned char>(high * 16 + low);
        ++i;
    }
    if (ok) {
        std::memcpy(fBytes, bytes, sizeof fBytes);
        fValid = true;
    }
    if (ReturnStatus != nullptr)
        *ReturnStatus = ok ? MStatus::kSuccess : MStatus::kInvalidParameter;
}

MUuid::~MUuid() = default;

MUuid& MUuid::operator=(const MUuid& rhs) = default;

bool MUuid::operator==(const MUuid& rhs) const
{
    if (fValid != rhs.fValid)
        return false;
    return !fValid || std::memcmp(fBytes, rhs.fBytes, sizeof fBytes) == 0;
}

bool MUuid::operator!=(const MUuid& rhs) const { return !(*this == rhs); }

MStatus MUuid::get(unsigned char* uuid) const
{
    if (uuid == nullptr)
        return MStatus::kInvalidParameter;
    if (!fValid)
        return MStatus::kFailure;
    std::memcpy(uuid, fBytes, sizeof fBytes);
    return MStatus::kSuccess;
}

MString MUuid::asString() const
{
    if (!fValid)
        return MString();
    static const char digits[] = "0123456789ABCDEF";
    char text[37];
    int out = 0;
    for (int i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            text[out++] = '-';
        text[out++] = digits[fBytes[i] >> 4];
        text[out++] = digits[fBytes[i] & 0x0F];
    }
    text[out] = '\0';
    return MString(text);
}

MUuid::operator MString() const { return asString(); }

void MUuid::copy(const MUuid& rhs) { *this = rhs; }

bool MUuid::valid() const { return fValid; }

MStatus MUuid::generate()
{
    std::uint64_t high = 0;
    std::uint64_t low = 0;
    {
        std::lock_guard<std::mutex> lock(generatorMutex());
        high = generator()();
        low = generator()();
    }
    for (int i = 0; i < 8; ++i) {
        fBytes[i] = static_cast<unsigned char>(high >> (56 - 8 * i));
        fBytes[8 + i] = static_cast<unsigned char>(low >> (56 - 8 * i));
    }
    fBytes[6] = static_cast<unsigned char>((fBytes[6] & 0x0F) | 0x40);
    fBytes[8] = static_cast<unsigned char>((fBytes[8] & 0x3F) | 0x80);
    fValid = true;
    return MStatus::kSuccess;
}

const char* MUuid::className() { return "MUuid"; }

#include <cstring>
#include <new>

#include "bcgdi.h"
#include "bcids1.h"
#include "bcstream.h"

namespace {
constexpr unsigned int kMaxPoints = 1u << 20;
constexpr unsigned int kPointBytes = 4; // two 16-bit coordinates
} // namespace

BCPolyline::BCPolyline(BCModule* module)
    : BCObject(bcids::kTypePolyline), lpPoints(nullptr), wCount(0), wCapacity(0), opModule(module) {
}

BCPolyline::BCPolyline(unsigned int count, const short* xy, BCModule* module) : BCPolyline(module) {
    SetPoints(count, xy);
}

BCPolyline::~BCPolyline() {
    delete[] lpPoints;
}

int BCPolyline::Reserve(unsigned int count) {
    if (count <= wCapacity)
        return 1;
    if (count > kMaxPoints)
        return 0;
    unsigned int capacity = wCapacity ? wCapacity : 8;
    while (capacity < count)
        capacity *= 2;
    short* points = new (std::nothrow) short[2 * capacity];
    if (!points)
        return 0;
    if (wCount)
        std::memcpy(points, lpPoints, wCount * kPointBytes);
    delete[] lpPoints;
    lpPoints = points;
    wCapacity = capacity;
    return 1;
}

int BCPolyline::SetPoints(unsigned int count, const short* xy) {
    if ((count && !xy) || !Reserve(count))
        return 0;
    if (count)
        std::memcpy(lpPoints, xy, count * kPointBytes);
    wCount = count;
    return 1;
}

int BCPolyline::AddPoint(const BCPosition& point) {
    if (!Reserve(wCount + 1))
        return 0;
    lpPoints[2 * wCount] = point.GetX();
    lpPoints[2 * wCount + 1] = point.GetY();
    ++wCount;
    return 1;
}

BCPosition BCPolyline::GetPoint(unsigned int index) const {
    return index < wCount ? BCPosition(lpPoints[2 * index], lpPoints[2 * index + 1]) : BCPosition();
}

int BCPolyline::Load(std::istream& is) {
    unsigned int count = 0;
    if (!BCObject::Load(is) || !BCLoadWord(is, count) || count > kMaxPoints)
        return 0;
    long long remaining = BCStreamRemaining(is);
    if (remaining >= 0 && remaining < static_cast<long long>(count) * kPointBytes)
        return 0;
    short* points = new (std::nothrow) short[2 * count + 2];
    if (!points)
        return 0;
    for (unsigned int i = 0; i < 2 * count; ++i) {
        if (!BCLoadCoord(is, points[i])) {
            delete[] points;
            return 0;
        }
    }
    delete[] lpPoints;
    lpPoints = points;
    wCount = count;
    wCapacity = count + 1;
    return 1;
}

int BCPolyline::Save(std::ostream& os) {
    if (!BCObject::Save(os) || !BCSaveWord(os, wCount))
        return 0;
    for (unsigned int i = 0; i < 2 * wCount; ++i)
        if (!BCSaveCoord(os, lpPoints[i]))
            return 0;
    return 1;
}

void BCPolyline::Display(const char* prefix) {
    DispObjectMsg("%swCount=%u", prefix ? prefix : "", wCount);
}

#pragma once

#include <cstdint>

#include "core/files/FileSystem.h"
#include "model/program/ProgressMeter.h"

namespace tamarind {

class ProgressListener {
public:
    virtual ~ProgressListener() = default;
    virtual void OnProgress(const ProgressMeter&) = 0;
    virtual void OnProgressEnd() = 0;
};

// How far a load has come, for a bar that moves twenty times a second at the most.
class LoadProgress {
public:
    explicit LoadProgress(FileSystem& clock) : m_clock(clock) {}

    // Null: nobody listens.
    void SetListener(ProgressListener* listener) { m_listener = listener; }

    void Begin() {
        m_meter.Restart();
        m_nextTicks = m_clock.NowTicks() + kTicks;
    }

    // To be called before each key.
    void Advance() {
        m_meter.Advance();
        if (m_listener == nullptr || m_meter.Count() % kStride != 0) {
            return;
        }
        const std::uint64_t now = m_clock.NowTicks();
        if (now >= m_nextTicks) {
            m_nextTicks = now + kTicks;
            m_listener->OnProgress(m_meter);
        }
    }

    void End() {
        if (m_listener != nullptr) {
            m_listener->OnProgressEnd();
        }
    }

private:
    static constexpr std::uint64_t kTicks = 500'000;  // 50 ms
    static constexpr int kStride = 256;               // keys between two looks at the clock

    FileSystem& m_clock;
    ProgressListener* m_listener = nullptr;
    ProgressMeter m_meter;
    std::uint64_t m_nextTicks = 0;
};

}  // namespace tamarind

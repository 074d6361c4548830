#pragma once

namespace tamarind {

// Counts the keys while a file is loaded. The number of keys is not known in advance, so the
// maximum grows whenever the count passes it, and the bar never overflows.
class ProgressMeter {
public:
    static constexpr int kFirstMaximum = 220;
    static constexpr int kMaximumStep = 300;

    void Restart() {
        m_count = 1;
        m_maximum = kFirstMaximum;
    }

    void Advance() {
        if (++m_count > m_maximum) {
            m_maximum += kMaximumStep;
        }
    }

    int Count() const { return m_count; }
    int Maximum() const { return m_maximum; }

private:
    int m_count = 1;
    int m_maximum = kFirstMaximum;
};

}  // namespace tamarind

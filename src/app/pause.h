#pragma once

namespace porvane {

// The shared pause: the desk keeps its window alive while it waits, tests return at once.
class Pause {
public:
    virtual ~Pause() = default;
    virtual void wait(double seconds) = 0;
};

// Waits on a monotonic clock while the event loop runs, so a pause across midnight ends on time.
class EventLoopPause final : public Pause {
public:
    void wait(double seconds) override;
};

// The shared pause helper: waits the given seconds while the user interface stays alive.
inline void Wait(Pause& pause, double seconds) {
    pause.wait(seconds);
}

class InstantPause final : public Pause {
public:
    void wait(double seconds) override { m_total += seconds; }
    double total() const { return m_total; }

private:
    double m_total = 0;
};

} // namespace porvane

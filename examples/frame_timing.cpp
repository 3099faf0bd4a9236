// Times the frames of an animation: how long each took, and where on its timeline the animation stands.
//
//   frame_timing

#include <cstdio>
#include <zel/zel.h>

namespace {

/// Stands for the work of a frame: a plane of turbulence at a point of time. Returns its mean.
float drawFrame(float time) {
    constexpr int kSize = 64;
    float sum = 0.0F;
    for (int y = 0; y < kSize; ++y)
        for (int x = 0; x < kSize; ++x) {
            float const scale = 4.0F / kSize;
            Zel::Vector3Template<float> const point(static_cast<float>(x) * scale,
                                                    static_cast<float>(y) * scale, time);
            sum += Zel::turbulence(point, 8.0F);
        }
    return sum / (kSize * kSize);
}

} // namespace

int main() {
    try {
        Zel::Zel_Init const init;
        Zel::Timer timer(Zel::Timer::PERFORMANCE_COUNTER); // the finest of the three clocks
        timer.set(10.0F); // the animation starts where ten seconds have passed
        for (int frame = 1; frame <= 5; ++frame) {
            float const mean = drawFrame(timer.get());
            float const seconds = timer.sample(); // since the previous sample, here since set
            std::printf("frame %d: %8.3f ms, mean %.4f\n", frame, static_cast<double>(seconds) * 1000.0,
                        static_cast<double>(mean));
        }
        std::printf("the animation stands at %.3f s\n", static_cast<double>(timer.get()));
        return 0;
    } catch (Zel::Exception const& exception) {
        std::fprintf(stderr, "frame_timing: %s\n", exception.getError());
        return 3;
    }
}

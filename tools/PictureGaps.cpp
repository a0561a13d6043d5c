#include "tools/PictureGaps.h"

#include <algorithm>
#include <vector>

namespace
{
struct Colour
{
    float Red = 0.0F;
    float Green = 0.0F;
    float Blue = 0.0F;
    float Weight = 0.0F; ///< 0 where nothing is known yet
};

struct Layer
{
    int Width = 0;
    int Height = 0;
    std::vector<Colour> Cells;

    [[nodiscard]] Colour& At(int x, int y)
    {
        return Cells[static_cast<size_t>(y) * static_cast<size_t>(Width) + static_cast<size_t>(x)];
    }
};

Layer Half(Layer& layer)
{
    Layer half{(layer.Width + 1) / 2, (layer.Height + 1) / 2, {}};
    half.Cells.resize(static_cast<size_t>(half.Width) * static_cast<size_t>(half.Height));
    for (int y = 0; y < layer.Height; ++y) {
        for (int x = 0; x < layer.Width; ++x) {
            const Colour& cell = layer.At(x, y);
            Colour& sum = half.At(x / 2, y / 2);
            sum.Red += cell.Red * cell.Weight;
            sum.Green += cell.Green * cell.Weight;
            sum.Blue += cell.Blue * cell.Weight;
            sum.Weight += cell.Weight;
        }
    }
    for (Colour& cell : half.Cells) {
        if (cell.Weight > 0.0F) {
            cell = {cell.Red / cell.Weight, cell.Green / cell.Weight, cell.Blue / cell.Weight, 1.0F};
        }
    }
    return half;
}

/// Gives the unknown cells of a layer the colour between the nearest cells of the coarser one.
void FillFrom(Layer& layer, Layer& half)
{
    for (int y = 0; y < layer.Height; ++y) {
        for (int x = 0; x < layer.Width; ++x) {
            Colour& cell = layer.At(x, y);
            if (cell.Weight > 0.0F) {
                continue;
            }
            const int besideX = std::clamp(x / 2 + (x % 2 == 0 ? -1 : 1), 0, half.Width - 1);
            const int besideY = std::clamp(y / 2 + (y % 2 == 0 ? -1 : 1), 0, half.Height - 1);
            const Colour near = half.At(x / 2, y / 2);
            const Colour sideways = half.At(besideX, y / 2);
            const Colour updown = half.At(x / 2, besideY);
            const Colour across = half.At(besideX, besideY);
            const auto blend = [&](float Colour::*part) {
                return (9.0F * near.*part + 3.0F * sideways.*part + 3.0F * updown.*part + across.*part) / 16.0F;
            };
            cell = {blend(&Colour::Red), blend(&Colour::Green), blend(&Colour::Blue), 1.0F};
        }
    }
}
} // namespace

void PictureGaps::Fill(QImage& picture, const Test& isGap, const Test& isSource)
{
    std::vector<Layer> layers(1);
    layers[0] = {picture.width(), picture.height(), {}};
    bool hasSource = false;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            const bool isKnown = isSource(x, y, pixel) && !isGap(x, y, pixel);
            hasSource = hasSource || isKnown;
            layers[0].Cells.push_back({static_cast<float>(qRed(pixel)), static_cast<float>(qGreen(pixel)),
                                       static_cast<float>(qBlue(pixel)), isKnown ? 1.0F : 0.0F});
        }
    }
    if (!hasSource) {
        return;
    }
    while (layers.back().Width > 1 || layers.back().Height > 1) {
        layers.push_back(Half(layers.back()));
    }
    for (size_t index = layers.size() - 1; index > 0; --index) {
        FillFrom(layers[index - 1], layers[index]);
    }
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (isGap(x, y, picture.pixel(x, y))) {
                const Colour& cell = layers[0].At(x, y);
                picture.setPixel(
                    x, y, qRgb(static_cast<int>(cell.Red), static_cast<int>(cell.Green), static_cast<int>(cell.Blue)));
            }
        }
    }
}

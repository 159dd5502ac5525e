#pragma once

#include <OpenImageIO/imageio.h>

#include <filesystem>
#include <vector>

/** The content of a picture file, written and read without the code under test. */
struct RawPicture {
    OIIO::ImageSpec spec;
    std::vector<float> values; ///< all channels of all pixels, 1.0 for white

    /// Returns a picture with all pixels equal; `alpha` is the index of the alpha channel, -1 for
    /// none.
    static RawPicture of(std::vector<float> pixel, OIIO::TypeDesc type, int alpha, int width = 3,
                         int height = 2) {
        RawPicture picture{{width, height, static_cast<int>(pixel.size()), type}, {}};
        picture.spec.alpha_channel = alpha;
        picture.spec.attribute("oiio:UnassociatedAlpha", 1);
        for (int i = 0; i < width * height; ++i) {
            picture.values.insert(picture.values.end(), pixel.begin(), pixel.end());
        }
        return picture;
    }

    void write(const std::filesystem::path& file) const {
        const auto output = OIIO::ImageOutput::create(file.string());
        if (!output->open(file.string(), spec) ||
            !output->write_image(OIIO::TypeDesc::FLOAT, values.data()) || !output->close()) {
            throw std::runtime_error(output->geterror());
        }
    }

    static RawPicture read(const std::filesystem::path& file) {
        OIIO::ImageSpec wishes;
        wishes.attribute("oiio:UnassociatedAlpha", 1);
        const auto input = OIIO::ImageInput::open(file.string(), &wishes);
        if (input == nullptr) {
            throw std::runtime_error(OIIO::geterror());
        }
        RawPicture picture{input->spec(), {}};
        picture.values.resize(picture.spec.image_pixels() *
                              static_cast<std::size_t>(picture.spec.nchannels));
        input->read_image(0, 0, 0, picture.spec.nchannels, OIIO::TypeDesc::FLOAT,
                          picture.values.data());
        return picture;
    }

    std::vector<float> firstPixel() const {
        return {values.begin(), values.begin() + spec.nchannels};
    }
};

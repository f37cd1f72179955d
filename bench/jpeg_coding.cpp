// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// jpeg_coding IN OUT SCALE CHROMA [NAME=VALUE[,VALUE]...]...: writes a picture as a JPEG by the product's
// encoder with other numbers than its own. CHROMA is half or full; a name is one of the members of
// TunedCoding, those of a component behind its name and a dot: brightness.steps, redDifference.zeroBelow.
// Without arguments the product's own numbers are printed, as they would be given.
#include "jpeg/jpeg_encoder.h"
#include "jpeg/quality_coding.h"

#include <vips/vips.h>

#include <fstream>
#include <iostream>
#include <map>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

using namespace lumora;

using Values = std::map<std::string, std::span<float>>;

Values valuesOf(TunedCoding& coding)
{
    Values values{{"mostZeroBelow", {&coding.mostZeroBelow, 1}},
                  {"roundUpFrom", {&coding.roundUpFrom, 1}},
                  {"roundUpRise", {&coding.roundUpRise, 1}}};
    const auto add = [&](const std::string& name, TunedComponent& component) {
        values.emplace(name + ".steps", component.steps);
        values.emplace(name + ".zeroBelow", component.zeroBelow);
        values.emplace(name + ".zeroBelowRise", component.zeroBelowRise);
    };
    add("brightness", coding.brightness);
    add("blueDifference", coding.blueDifference);
    add("redDifference", coding.redDifference);
    return values;
}

void print(const std::string& chroma, TunedCoding coding)
{
    for (const auto& [name, values] : valuesOf(coding)) {
        std::cout << chroma << ' ' << name;
        for (std::size_t i = 0; i < values.size(); ++i)
            std::cout << (i == 0 ? '=' : ',') << values[i];
        std::cout << '\n';
    }
}

void change(const Values& values, const std::string& argument)
{
    const std::size_t sign = argument.find('=');
    const std::span<float> places = values.at(argument.substr(0, sign));
    std::istringstream numbers(argument.substr(sign + 1));
    std::string number;
    for (float& place : places) {
        if (!std::getline(numbers, number, ',')) throw std::runtime_error("too few values: " + argument);
        place = std::stof(number);
    }
}

void encode(std::span<char*> arguments)
{
    const bool isFull = std::string(arguments[3]) == "full";
    TunedCoding coding = isFull ? fullChromaCoding : halvedChromaCoding;
    for (char* argument : arguments.subspan(4))
        change(valuesOf(coding), argument);
    JpegRequest request{
        vips_image_new_from_file(arguments[0], "access", VIPS_ACCESS_SEQUENTIAL, nullptr), {}, isFull, {}};
    if (!request.image) throw std::runtime_error(vips_error_buffer());
    const float scale = std::stof(arguments[2]);
    for (const auto component :
         {JpegComponent::brightness, JpegComponent::blueDifference, JpegComponent::redDifference})
        request.codings.push_back(scaledCoding(coding, component, scale));
    request.codings.resize(vips_image_get_bands(request.image) == 1 ? 1 : 3);
    std::ofstream file(arguments[1], std::ios::binary);
    const auto status = encodeJpeg(request, [&](std::span<const std::byte> bytes) -> Status {
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return Done{};
    });
    if (!status) throw std::runtime_error(status.error().description);
}

} // namespace

int main(int count, char** arguments)
try {
    if (VIPS_INIT(arguments[0]) != 0) return 1;
    if (count >= 5) {
        encode(std::span(arguments, static_cast<std::size_t>(count)).subspan(1));
        return 0;
    }
    print("half", halvedChromaCoding);
    print("full", fullChromaCoding);
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}

#include "draw/render.h"

#include <algorithm>
#include <cctype>
#include <iostream>
#include <iterator>
#include <utility>
#include <vector>

#include "draw/svg.h"
#include "system/process.h"
#include "system/replace_file.h"
#include "system/temporary_folder.h"
#include "text/failure.h"
#include "text/near_names.h"
#include "text/number.h"
#include "text/progress.h"
#include "text/table.h"

namespace vrltool::draw {

namespace {

constexpr char kProgram[] = "rsvg-convert";
constexpr unsigned kPatienceSeconds = 120;
constexpr double kZoom = 2;
constexpr double kMostPixels = 32000;

struct FormatName {
    PictureFormat format;
    char const* name;
};

constexpr FormatName kFormats[] = {{PictureFormat::kSvg, "svg"},
                                   {PictureFormat::kDot, "dot"},
                                   {PictureFormat::kPdf, "pdf"},
                                   {PictureFormat::kPng, "png"},
                                   {PictureFormat::kHtml, "html"}};

/// Blanks the time at which a PDF was made; its length stays, on which the table at its end relies.
std::string cleanPdf(std::string pdf) {
    std::string const entry = "/CreationDate (";
    auto const from = pdf.rfind(entry);
    auto const to = from == std::string::npos ? from : pdf.find(')', from);
    if (to != std::string::npos) std::fill_n(pdf.begin() + static_cast<std::ptrdiff_t>(from), to + 1 - from, ' ');
    return pdf;
}

std::string firstLine(std::string const& text) { return printable(text.substr(0, text.find('\n'))); }

void checkEnd(ProcessResult const& ended) {
    if (!ended.started)
        throw Failure(kProgram, "the program that converts the picture is missing",
                      "install it (the package 'librsvg2-bin'), or write the picture with '-o FILE.svg'");
    if (ended.timedOut)
        throw Failure(kProgram, "did not convert the picture within " + counted(kPatienceSeconds, "second"),
                      "draw less of it with --max N, --around ELEMENT or a smaller --depth");
    if (!ended.fine())
        throw Failure(kProgram, ended.how() + (ended.err.empty() ? "" : ": " + firstLine(ended.err)),
                      "write the picture with '-o FILE.svg', and see what is wrong with that");
}

/// Counts the seconds at a terminal; the counter is wiped before anything is said of the end.
ProcessResult runWithCounter(Program program) {
    Progress progress("drawing:", "s");
    program.waiting = [&progress](std::size_t seconds) { progress.at(seconds); };
    return runProgram(program);
}

/// How many points of a bitmap a point of the picture has. Bitmaps have a largest size.
double zoomOf(Scene const& scene) {
    double const most = kMostPixels / static_cast<double>(std::max(scene.width, scene.height));
    if (most < kZoom)
        std::cerr << "vrl: the picture is too large for a bitmap of full size; svg and pdf have no such limit\n";
    return std::min(kZoom, most);
}

}  // namespace

std::optional<PictureFormat> pictureFormat(std::string const& name) {
    std::string lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
    for (FormatName const& entry : kFormats)
        if (lower == entry.name) return entry.format;
    return std::nullopt;
}

std::string formatName(PictureFormat format) {
    return std::find_if(std::begin(kFormats), std::end(kFormats),
                        [&](FormatName const& known) { return known.format == format; })
        ->name;
}

char const* pictureFormats() { return "svg, dot, pdf, png or html"; }

std::string nearFormats(std::string const& wrong) {
    std::vector<std::string> names;
    for (FormatName const& entry : kFormats) names.push_back(entry.name);
    std::string const near = didYouMean(wrong, names);
    return near.empty() ? near : "; " + near;
}

// Several pages are made of several files; one is read from standard input.
std::string converted(std::vector<Scene> const& sheets, PictureFormat format) {
    std::vector<std::string> words{kProgram, "--unlimited", "--format", formatName(format)};
    for (std::string const axis : {"-d", "-p"}) words.insert(words.end(), {axis, "72"});
    if (format == PictureFormat::kPng) words.insert(words.end(), {"--zoom", numberText(zoomOf(sheets[0]))});
    std::optional<TemporaryFolder> folder;
    if (sheets.size() > 1) folder.emplace();
    for (std::size_t i = 0; folder && i < sheets.size(); ++i) {
        words.push_back(*folder / (std::to_string(i + 1) + ".svg"));
        replaceFile(words.back(), svgText(sheets[i]));
    }
    ProcessResult ended = runWithCounter({words, folder ? "" : svgText(sheets[0]), "", kPatienceSeconds});
    checkEnd(ended);
    return format == PictureFormat::kPdf ? cleanPdf(std::move(ended.out)) : ended.out;
}

}  // namespace vrltool::draw

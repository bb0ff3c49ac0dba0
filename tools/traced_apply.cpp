#include "traced_apply.h"

#include "apply.h"
#include "msgtext.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>

#include <unistd.h>

namespace cfgmsg {

namespace {

// What `run` prints on standard output, the library's trace included.
std::vector<std::string> captured_lines(const std::function<void()> &run)
{
    std::vector<std::string> lines;
    std::fflush(stdout);
    std::unique_ptr<FILE, int (*)(FILE *)> into(std::tmpfile(), std::fclose);
    const int saved = into ? dup(STDOUT_FILENO) : -1;
    if (saved < 0 || dup2(fileno(into.get()), STDOUT_FILENO) < 0) {
        // No file to gather them in: the lines go to standard error as they
        // are, never into the configuration on standard output.
        const int out = dup(STDOUT_FILENO);
        const bool moved = out >= 0 && dup2(STDERR_FILENO, STDOUT_FILENO) >= 0;
        run();
        std::fflush(stdout);
        if (moved)
            dup2(out, STDOUT_FILENO);
        if (out >= 0)
            close(out);
        if (saved >= 0)
            close(saved);
        return lines;
    }
    run();
    std::fflush(stdout);
    dup2(saved, STDOUT_FILENO);
    close(saved);
    std::rewind(into.get());
    std::string line;
    for (int c; (c = std::fgetc(into.get())) != EOF;) {
        if (c != '\n') {
            line += static_cast<char>(c);
            continue;
        }
        lines.push_back(std::move(line));
        line.clear();
    }
    if (!line.empty())
        lines.push_back(std::move(line));
    return lines;
}

// A trace line without its time of day ("hh:mm:ss.mmm  "), which differs
// from one run to the next.
std::string_view untimed(std::string_view line)
{
    const std::size_t gap = line.find("  ");
    return gap == std::string_view::npos ? line : line.substr(gap);
}

} // namespace

void apply_traced(cfg_image_t &image, std::span<const std::uint8_t> bytes, const std::string &file)
{
    const auto copy = std::unique_ptr<cfg_image_t, void (*)(void *)>(
        static_cast<cfg_image_t *>(std::malloc(sizeof(cfg_image_t))), std::free);
    if (copy)
        std::memcpy(copy.get(), &image, sizeof(cfg_image_t));
    const std::vector<std::string> lines = captured_lines([&] { apply_message(image, bytes); });
    if (lines.empty())
        return;

    // Again, node by node, over the image as it was.
    std::vector<std::string> labels;
    message msg;
    wire_error err;
    if (copy && decode(bytes, msg, err)) {
        std::vector<std::string> again;
        message one = msg;
        one.nodes.clear();
        for (const node &nd : msg.nodes) {
            one.nodes.assign(1, nd);
            for (std::string &line : captured_lines([&] { apply_message(*copy, encode(one)); })) {
                again.push_back(std::move(line));
                labels.push_back("[" + escape(nd.path, field_kind::path) + "]: ");
            }
        }
        bool same = again.size() == lines.size();
        for (std::size_t i = 0; same && i < lines.size(); ++i)
            same = untimed(again[i]) == untimed(lines[i]);
        if (!same)
            labels.clear();
    }
    for (std::size_t i = 0; i < lines.size(); ++i)
        std::fprintf(stderr, "cfgmsg: %s: %s%s\n", file.c_str(), labels.empty() ? "" : labels[i].c_str(),
                     lines[i].c_str());
}

} // namespace cfgmsg

#include "crash/record.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace crash {

std::string describe(const Step& step)
{
    const std::string file = "file " + std::to_string(step.file);
    switch (step.kind) {
    case Step::Kind::AddEntry:
        return "add the name " + step.path + " of " + file;
    case Step::Kind::AddFolder:
        return "make the folder " + step.path;
    case Step::Kind::Rename:
        return "rename " + step.path + " to " + step.newPath;
    case Step::Kind::RemoveEntry:
        return "remove " + step.path;
    case Step::Kind::Write:
        return "write " + std::to_string(step.bytes.size()) + " bytes at " +
               std::to_string(step.position) + " of " + file;
    case Step::Kind::Resize:
        return "set the size of " + file + " to " + std::to_string(step.position);
    case Step::Kind::SyncFile:
        return "sync " + file;
    case Step::Kind::SyncFolder:
        return "sync the folder '" + step.path + "'";
    }
    return {};
}

Image readFolder(const std::string& folder)
{
    Image image;
    for (const fs::directory_entry& each : fs::recursive_directory_iterator(folder)) {
        if (!each.is_regular_file())
            continue;
        std::ifstream file(each.path(), std::ios::binary);
        image[fs::relative(each.path(), folder).string()].assign(
            std::istreambuf_iterator<char>(file), {});
    }
    return image;
}

void writeFolder(const std::string& folder, const Image& image)
{
    fs::remove_all(folder);
    fs::create_directories(folder);
    for (const auto& [name, bytes] : image) {
        const fs::path path = fs::path(folder) / name;
        fs::create_directories(path.parent_path());
        std::ofstream file(path, std::ios::binary);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!file.flush())
            throw std::runtime_error("cannot write " + path.string());
    }
}

} // namespace crash

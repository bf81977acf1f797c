#include "shell/ModuleAssociateIcon.h"

#include "core/trap.h"

#include <string>

namespace ModuleAssociateIcon {

namespace {

constexpr const char* kEnding = ".qpj";
constexpr const char* kClass = "QMT_Project";

} // namespace

void SetRegistryString(ClassRoot& root, std::string_view key, std::string_view valueName, std::string_view text)
{
    root.setString(key, valueName, text);
}

void SetRegistryNumber(ClassRoot& root, std::string_view key, std::string_view valueName, std::uint32_t number)
{
    root.setNumber(key, valueName, number);
}

void ApplyFileAssociation()
{
    Trapped("ModuleAssociateIcon", "ApplyFileAssociation", [] {
        if (ports.classRoot == nullptr) {
            return;
        }
        ClassRoot& root = *ports.classRoot;
        const std::string program = ports.shell->programFolder() + "\\quillmont.exe";
        const std::string ofClass = kClass;
        SetRegistryString(root, kEnding, "", kClass);
        SetRegistryString(root, kEnding, "Content Type", "text/plain");
        SetRegistryString(root, kClass, "", "Quillmont Project File");
        SetRegistryNumber(root, kClass, "EditFlags", 0);
        SetRegistryString(root, ofClass + "\\DefaultIcon", "", program + ",0");
        SetRegistryString(root, ofClass + "\\Shell", "", "");
        SetRegistryString(root, ofClass + "\\Shell\\Open", "", "");
        // No quotes around the path: the command line is taken as one path, blanks and all.
        SetRegistryString(root, ofClass + "\\Shell\\Open\\Command", "", program + " %1");
        root.notifyChanged();
    });
}

} // namespace ModuleAssociateIcon

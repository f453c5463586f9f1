#include "programs/ctl/radio_copies.h"

#include "files/radio_copy_file.h"
#include "files/whole_file.h"
#include "programs/ctl/user_files.h"
#include "radio/models.h"

namespace q40 {

int CopyOrComplain(CommandContext& context, const std::string& path, RadioCopy& copy) {
  std::string text;
  auto problem = ReadInput(path, kLongestRadioCopy, text);
  if (!problem) problem = ReadRadioCopy(text, InputName(path), copy);
  return problem ? context.console.Error(*problem) : static_cast<int>(kExitDone);
}

int CheckSameModel(CommandContext& context, const std::string& a, int model_a, const std::string& b,
                   int model_b) {
  if (model_a == model_b) return kExitDone;
  return context.console.Error(
      kExitWrongModel, "Model is not correct: " + InputName(a) + " is for an " +
                           std::string(ModelName(model_a)) + ", " + InputName(b) + " for an " +
                           std::string(ModelName(model_b)) + ". Nothing was sent.");
}

int ContentOrComplain(CommandContext& context, const std::optional<std::string>& path,
                      const std::string& file, int model, RadioContent& content) {
  if (!path) return kExitDone;
  RadioCopy copy;
  if (const int code = CopyOrComplain(context, *path, copy)) return code;
  content = ContentOf(copy);
  return CheckSameModel(context, *path, copy.model, file, model);
}

int CheckBackup(CommandContext& context, const std::optional<std::string>& path) {
  if (!path) return kExitDone;
  Product product(context, *path);
  if (product.IsStream()) {
    return context.console.Error(kExitUsage, *path + " is no file. A backup needs one.");
  }
  return product.Prepare(false, "A backup replaces no file; name another.");
}

std::function<bool(const RadioCopy& radio)> KeepIn(CommandContext& context, std::string path) {
  return [&context, path = std::move(path)](const RadioCopy& radio) {
    if (const auto problem = SaveRadioCopy(path, radio)) {
      context.console.Error(*problem);
      return false;
    }
    context.console.Note("The radio's memory is kept in " + path);
    return true;
  };
}

}  // namespace q40

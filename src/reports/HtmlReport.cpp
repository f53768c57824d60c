#include "reports/HtmlReport.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <set>

#include "device/CodePage.h"
#include "device/FileIdentity.h"
#include "device/Format.h"

namespace inspector::reports {
namespace {

constexpr TextView kProgramFolder = u"\\Program Files\\Brindlecove\\";

// The numbers by which the device knows why a folder cannot be made.
enum class DeviceError : int {
  PathNotFound = 3,
  AccessDenied = 5,
  DiskFull = 112,
  InvalidName = 123,
  GeneralFailure = 31,
};

DeviceError DeviceErrorOf(const std::error_code& error) {
  switch (error.value()) {
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
      return DeviceError::PathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
      return DeviceError::AccessDenied;
    case ENOSPC:
    case EDQUOT:
      return DeviceError::DiskFull;
    case EINVAL:
    case EILSEQ:
    case ENAMETOOLONG:
      return DeviceError::InvalidName;
    default:
      return DeviceError::GeneralFailure;
  }
}

bool CanNameFolder(TextView documentNumber) {
  return documentNumber.find_first_of(u"\\/:") == TextView::npos &&
         documentNumber.find(u"..") == TextView::npos;
}

bool RefuseFolder(ReportRun& run, const Text& folder, DeviceError error) {
  device::ShowError(run.GetMachine().prompts, device::Format(u"Unable to create the %s directory. Error#%d",
                                                             folder, static_cast<int>(error)));
  return false;
}

bool WasThere(const std::error_code& error) {
  return error == std::errc::file_exists;
}

bool HoldsOnlyPages(const device::Machine& machine, const std::filesystem::path& folder) {
  const std::vector<Text> entries = machine.files.ListEntries(folder);
  return std::all_of(entries.begin(), entries.end(), [](const Text& entry) {
    return std::find(std::begin(kPages), std::end(kPages), entry) != std::end(kPages);
  });
}

// A page that is a link would replace what it leads to, wherever that is.
Text FirstLink(const std::filesystem::path& folder) {
  std::error_code error;
  for (const TextView page : kPages)
    if (std::filesystem::is_symlink(folder / page, error)) return Text(page);
  return {};
}

// Pages and their pictures must not lie among those that reports are made from: a number in a comment would
// mean another picture, and a copy could be taken for an original. `pictures` are all of the inspection.
Text WhyNotInto(const std::filesystem::path& folder, const PageRecord& record,
                const std::vector<std::filesystem::path>& pictures) {
  const Text name = device::FromUtf8(folder.native());
  if (device::IsSamePlace(folder, "/")) return name + u" cannot hold the pages. Choose a folder below it.";
  if (!record.Problem().empty()) return record.Problem();
  if (const Text link = FirstLink(folder); !link.empty())
    return device::Format(u"%s in %s is a link to another place. Remove it, or choose another folder.", link,
                          name);
  std::set<std::filesystem::path> places;
  for (const std::filesystem::path& picture : pictures) {
    if (record.IsOwn(picture.filename().string())) continue;
    std::error_code notThere;
    places.insert(picture.parent_path());
    if (std::filesystem::is_symlink(picture, notThere))
      places.insert(device::WholePath(picture).parent_path());
  }
  const bool isAmongThem = std::any_of(places.begin(), places.end(), [&](const std::filesystem::path& place) {
    return device::IsSamePlace(place, folder);
  });
  if (!isAmongThem) return {};
  return device::Format(
      u"%s is the folder of a picture of this inspection. Make the pages in a folder of their own.", name);
}

// False when there are pages that the person wants to keep.
bool MayReplacePages(const ReportSource& source, const PageRecord& record, ReportRun& run) {
  const bool isThere = std::any_of(std::begin(kPages), std::end(kPages), [&](TextView page) {
    return run.GetMachine().files.Exists(run.Target().path / page);
  });
  const bool isOfThis = record.Inspection() == source.inspection;
  const bool areOwn = record.ArePagesOwn() && !record.Inspection().empty();
  if (!isThere || (isOfThis && areOwn)) return true;
  const bool isOfAnother = !record.Inspection().empty() && !isOfThis;
  if (run.Target().mayReplace && !isOfAnother) return true;
  const TextView question =
      isOfAnother ? u"%s already holds the pages of another inspection, or of this one in another copy of "
                    u"the database. Do you want to replace them? Copies of pictures whose originals are not "
                    u"to be found stay in the folder."
      : isOfThis
          ? u"%s already holds pages of this inspection, which were changed since they were made. Do you "
            u"want to replace them?"
          : u"%s already holds pages that were not made from this inspection, or files of yours with the "
            u"same names. Do you want to replace them?";
  return device::ConfirmLoss(run.GetMachine().prompts,
                             device::Format(question, device::FromUtf8(run.Target().path.native())));
}

// False when the page is too large and the person does not want a part of it. A full disk is told at the end.
bool SavePage(ReportRun& run, TextView name, const Text& page) {
  std::string bytes = device::ToCodePage(page);
  if (bytes.size() > HtmlReport::kMostPageBytes) {
    const Text question = device::Format(
        u"The page %s has %d bytes, and a page can hold no more than %d. Leave out some categories, or make "
        u"the web page in one file, which has no such limit. Write only the beginning of the page?",
        name, bytes.size(), HtmlReport::kMostPageBytes);
    if (!device::ConfirmCaution(run.GetMachine().prompts, question)) return false;
    bytes.resize(HtmlReport::kMostPageBytes);
  }
  run.Create(run.Target().path / device::ToUtf8(name)).Write(bytes);
  return true;
}

bool SavePage(ReportRun& run, TextView name, const HtmlPage& page) {
  Text text;
  page.RenderTo(text);
  return SavePage(run, name, text);
}

}  // namespace

Text HtmlReport::FramesPage(TextView folder) {
  return device::Format(
      u"<html><head><title>Inspection Report</title></head><frameset cols=\"150,*\">"
      u"<frame name=\"contents\" target=\"contents\" src=\"%s%s\">"
      u"<frame name=\"main\" src=\"%s%s\" target=\"main\"></frameset></html>",
      folder, kContentsPage, folder, kInspectionPage);
}

void HtmlReport::Write(const ReportSource& source, ReportRun& run) const {
  // Until the end, whichever it is.
  const auto pictures = std::make_shared<PagePictures>(source.pictures, run);
  std::vector<std::filesystem::path> named;
  std::error_code error;
  // In a new folder there are none, nor in one that holds nothing but the pages that were made there.
  const bool isUsual = pictures->Record().Inspection() == source.inspection &&
                       HoldsOnlyPages(run.GetMachine(), run.Target().path);
  if (!isUsual && std::filesystem::is_directory(run.Target().path, error)) {
    auto all = source.allPictures();
    if (!all) return run.Refuse();
    named = std::move(*all);
  }
  if (const Text problem = WhyNotInto(run.Target().path, pictures->Record(), named); !problem.empty()) {
    device::ShowError(run.GetMachine().prompts, problem);
    return run.Refuse();
  }
  if (!Prepare(source, pictures->Record(), run) || !pictures->Plan(source.content)) return run.Refuse();
  run.WhenDone([pictures, named, inspection = source.inspection] { pictures->Finish(inspection, named); },
               [pictures] { pictures->Forget(); });
  HtmlPages pages(source.content, *pictures, source.options.m_HideRatings != 0);
  ReportProgress& progress = run.Progress();
  progress.SetStatus(u"Building Categories...");
  for (const ReportSection& category : source.content.sections) {
    if (!pages.AddCategory(category, progress) || run.HasFailed() || !progress.PartDone()) return;
  }
  pages.AddEnd();
  progress.SetStatus(u"Saving to file...");
  if (!SavePage(run, kInspectionPage, pages.Inspection()) ||
      !SavePage(run, kContentsPage, pages.Contents()) ||
      !SavePage(run, kFramesPage, FramesPage(FrameFolder())))
    return run.Refuse();
  progress.PartDone();
}

device::SaveQuestion HtmlExport::Question(const ReportHeader& header) const {
  return {u"Inspection" + header.documentNumber, Text(kProgramFolder), {}, {}};
}

bool HtmlExport::Prepare(const ReportSource& source, const PageRecord& record, ReportRun& run) const {
  if (device::IsSamePlace(run.Target().path, run.GetMachine().paths.Resolve(kProgramFolder))) {
    device::ShowError(
        run.GetMachine().prompts,
        device::Format(u"%s is for the pages that are looked at on the device. Make these pages in "
                       u"another folder.",
                       device::FromUtf8(run.Target().path.native())));
    return false;
  }
  return MayReplacePages(source, record, run) && MakeFolder(source.content.header, run);
}

bool HtmlExport::MakeFolder(const ReportHeader& header, ReportRun& run) const {
  const std::filesystem::path& folder = run.Target().path;
  const bool isSuggested = run.Target().isSuggested;
  const Text shown = isSuggested ? Question(header).folder + Question(header).suggestedName
                                 : device::FromUtf8(folder.native());
  if (isSuggested) {
    if (!CanNameFolder(header.documentNumber)) return RefuseFolder(run, shown, DeviceError::InvalidName);
    // The program's own folder is the device's business, whether anything lies in it yet or not.
    for (const auto& above : {folder.parent_path().parent_path(), folder.parent_path()})
      if (const auto error = run.MakeFolder(above); error && !WasThere(error))
        return RefuseFolder(run, shown, DeviceErrorOf(error));
  }
  if (const auto error = run.MakeFolder(folder); error && !WasThere(error))
    return RefuseFolder(run, shown, DeviceErrorOf(error));
  return true;
}

device::SaveQuestion HtmlView::Question(const ReportHeader&) const {
  return {{}, Text(kProgramFolder), {}, {}};
}

}  // namespace inspector::reports

#include "wizard/tessel_5.h"

#include "dispatch/recipients.h"
#include "host/error.h"
#include "host/names.h"
#include "messages/guard.h"
#include "wizard/page_layout.h"

namespace tessel {
namespace {

constexpr const char* kDispatchError = "Fehler beim Aufbauen der XML Dateien (Command1_Click/Tessel_4)";

struct FieldDesign {
  const char* code;
  const char* caption;
  double top;
  double height;
  bool multiLine;
};

// In the order of Tessel_5::Field.
constexpr FieldDesign kFields[] = {
    {"c0020", "An:", 480, 315, false},
    {"c0021", "Von:", 840, 315, false},
    {"c0022", "Betreff:", 1200, 315, false},
    {"c0023", "Inhalt:", 1680, 2720, true},
};

}  // namespace

void Tessel_5::Build() {
  frame3_ = AddFrame({0, 0, 6972, 4472}, "Mail Daten");
  for (std::size_t field = 0; field < kFieldCount; ++field) {
    const FieldDesign& design = kFields[field];
    const int index = static_cast<int>(field);
    label1_[field] = AddLabel("Label1", index, frame3_, {240, design.top, 615, 375}, design.caption);
    text1_[field] = &PageWindow().Add<TextBox>("Text1", index, frame3_,
                                               Rect{1560, design.top, 5055, design.height}, design.multiLine);
  }
  label2_ = AddLabel("Label2", -1, nullptr, {3000, 4650, 1575, 255}, "");
  label2_->Tag = "0";
  command1_ =
      AddButton("Command1", nullptr, {4800, 4575, 2172, 372}, "Versenden", [this] { ClickDepatchButton(); });
}

void Tessel_5::Activate() {
  TakeBounds(PageId::kRecipient);
  BringToTop();
  // The page outlives an export, and so would another one's counter.
  label2_->SetCaption("");
  if (Settings().b_AllowMultiRecipientSelection) ShowCounter(0);
  SetCaptions();
  StartRecords();
}

void Tessel_5::SetCaptions() {
  frame3_->SetCaption(Caption("c0019", "Mail Daten"));
  command1_->SetCaption(Caption("c0014", "Versenden"));
  for (std::size_t field = 0; field < kFieldCount; ++field)
    label1_[field]->SetCaption(Caption(kFields[field].code, kFields[field].caption));
}

void Tessel_5::StartRecords() {
  State().mails.assign(1, {});
  MailRecord& first = State().mails.front();
  label2_->Tag = "0";
  first.smtpServer = Settings().SMTPServer;
  // A user or contact person without address must not keep the rest of the page from being filled.
  first.sender = Guarded(GetServices().trace, "Error in (Sender/Tessel_5)", std::string(), [this] {
    const PcUserPtr user = Required(GetServices().Session().CurrentUser(), "current user");
    return Required(user->UserObject(), "user object")->GetText(Settings().UserEmailAttrName);
  });
  first.recipientAddress = RecipientAddress(0);
  text1_[kSender]->SetText(first.sender);
  text1_[kRecipient]->SetText(first.recipientAddress);
}

std::string Tessel_5::RecipientAddress(int row) const {
  return Guarded(GetServices().trace, "Error in (Recipient/Tessel_5)", std::string(), [&]() -> std::string {
    const PcRecordList& list = *Required(State().recipients, "recipient list");
    const PcObjectPtr contact =
        GetServices().Session().ObjectStore()->Object(RecipientOfRow(list, row).contact);
    if (!contact) return {};
    contact->ReadData();
    return contact->GetText(attribute::kEMail);
  });
}

int Tessel_5::RecipientCount() const {
  return State().recipients ? State().recipients->RowCount() : 0;
}

void Tessel_5::ShowCounter(int index) {
  label2_->SetCaption(std::to_string(index + 1) + " / " + std::to_string(RecipientCount()));
}

void Tessel_5::ClickDepatchButton() {
  GuardedRun(GetServices().trace, kDispatchError, [this] {
    if (IsMailMode(Mode()) && StepToNextRecipient()) return;
    Dispatch();
  });
}

bool Tessel_5::StepToNextRecipient() {
  if (!Loaded() || State().mails.empty()) ThrowObjectNotSet("mail data page");
  const int current = ParseInt32(label2_->Tag);
  StoreFields(State().mails.at(static_cast<std::size_t>(current)));
  const int next = current + 1;
  if (next > RecipientCount() - 1) return false;
  label2_->Tag = std::to_string(next);
  State().mails.resize(static_cast<std::size_t>(next) + 1);
  ShowCounter(next);
  text1_[kRecipient]->SetText(RecipientAddress(next));
  return true;
}

// The sender is what the configuration says; edits of its field have no effect.
void Tessel_5::StoreFields(MailRecord& mail) {
  mail.subject = text1_[kSubject]->Text();
  TraceLine("Mail Betreff: " + mail.subject);
  mail.content = text1_[kContent]->Text();
  TraceLine("Mail Inhalt: " + mail.content);
  mail.recipientAddress = text1_[kRecipient]->Text();
  TraceLine("Mail recipient: " + mail.recipientAddress);
}

void Tessel_5::Dispatch() {
  const DispatchRequest request = Flow().CollectedRequest();
  DispatchParts parts{GetServices(), Context().exchange, Context().structure, Context().additionalValues};
  RunDispatch(parts, request, State().outcome);
  if (State().outcome.dispatch != DispatchEnd::kFinished) return;
  State().ExportFinished = true;
  Hide();
}

void Tessel_5::Layout() {
  const Window& window = PageWindow();
  AnchorForwardButton(window, *command1_);
  AnchorFrame(window, *frame3_, kButtonRowReserve);
  ApplyLayout(window, {{label2_, Side::kTop, Extent::kHeight, 900},
                       {label2_, Side::kLeft, Extent::kWidth, 3510},
                       {text1_[kContent], Side::kHeight, Extent::kHeight, 2725}});
  for (TextBox* box : text1_)
    ApplyLayout(window, {{box, Side::kWidth, Extent::kWidth, 2025}});
}

}  // namespace tessel

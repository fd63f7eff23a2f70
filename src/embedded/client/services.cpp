#include "embedded/client/services.h"

#include "embedded/client/life_cycle.h"
#include "embedded/client/object.h"
#include "embedded/client/query.h"
#include "embedded/client/selection_dialog.h"
#include "embedded/store/schema.h"
#include "embedded/store/transaction.h"
#include "host/error.h"
#include "host/names.h"
#include "host/services.h"

namespace tessel::embedded {
namespace {

constexpr std::int16_t kOk = 1;
constexpr std::int16_t kCancel = 2;
constexpr int kRecipientAddress = 1;
constexpr int kSenderAddress = 2;

// The value in row 0 of a parameter list; Null when there is no such column or no row.
Value Parameter(const PcRecordListPtr& parameters, std::string_view name) {
  if (!parameters || parameters->RowCount() == 0 || !parameters->HasColumn(name)) return {};
  return parameters->GetValue(name, 0);
}

class SessionUtil final : public PcSessionUtil {
 public:
  explicit SessionUtil(EmbeddedSessionPtr session) : session_(std::move(session)) {}
  void RunOperation(PcObject& object, const PcLifeCycleOperation& operation, bool silent,
                    const PcRecordListPtr&, const PcRecordListPtr& parameters) override {
    LifeCycleRun run;
    const auto target = FindObject(session_, object.Key());
    if (!target)
      throw HostError("The object " + ObjectKeyText(object.Key(), '_') + " is gone", kCodeObjectGone);
    run.objects.push_back(target);
    run.operation = operation.Name();
    run.directory = Parameter(parameters, "DIRECTORY").AsText();
    const Value overwrite = Parameter(parameters, attribute::kFileOverwrite);
    run.overwrite = !overwrite.IsNull() && overwrite.AsInt32() != 0;
    run.comment = Parameter(parameters, "COMMENT").AsText();
    run.confirm = !silent;
    if (RunLifeCycle(*session_, run) != kOk) throw HostError("The operation was cancelled");
  }

 private:
  EmbeddedSessionPtr session_;
};

class LifeCycleView final : public PcLifeCycleView {
 public:
  explicit LifeCycleView(EmbeddedSessionPtr session) : session_(std::move(session)) {}
  void SetObjects(PcObjectListPtr objects) override { objects_ = std::move(objects); }
  void SetOperation(PcLifeCycleOperationPtr operation) override { operation_ = std::move(operation); }
  void SetFlag(bool) override {}  // this host's view has one form only
  void SetComment(const std::string& comment) override { comment_ = comment; }
  void Show() override {
    result_ = 0;
    LifeCycleRun run;
    const PcObjectListPtr objects = Required(objects_, "objects of the life-cycle view");
    for (int i = 0; i < objects->Count(); ++i)
      run.objects.push_back(objects->Item(i));
    run.operation = Required(operation_, "operation of the life-cycle view")->Name();
    run.directory = session_->GlobalData().Get("ExDir").AsText();
    run.comment = comment_;
    run.confirm = true;
    result_ = static_cast<std::int16_t>(RunLifeCycle(*session_, run));
  }
  [[nodiscard]] std::int16_t Result() const override { return result_; }

 private:
  EmbeddedSessionPtr session_;
  PcObjectListPtr objects_;
  PcLifeCycleOperationPtr operation_;
  std::string comment_;
  std::int16_t result_ = 0;
};

class LoginDialog final : public PcLoginDialog {
 public:
  explicit LoginDialog(EmbeddedSessionPtr session) : session_(std::move(session)) {}
  [[nodiscard]] std::int16_t ShowModal() override {
    const LoginAnswer answer = session_->Core().Dialogs().Login();
    if (!answer.accepted) return kCancel;
    return session_->Login(answer.loginName, answer.password, "") ? kOk : std::int16_t{0};
  }

 private:
  EmbeddedSessionPtr session_;
};

class CommonGui final : public PcCommonGUI {
 public:
  explicit CommonGui(EmbeddedSessionPtr session) : session_(std::move(session)) {}
  [[nodiscard]] std::shared_ptr<PcLifeCycleView> NewLifeCycleView() override {
    return std::make_shared<LifeCycleView>(session_);
  }
  [[nodiscard]] std::shared_ptr<PcLoginDialog> NewLoginDialog() override {
    return std::make_shared<LoginDialog>(session_);
  }
  [[nodiscard]] PcRecordListPtr SelectObjects(const SelectionRequest& request) override {
    return PickObjects(*session_, request);
  }
  [[nodiscard]] PcObjectPtr SelectFromQuery() override { return PickFromAll(session_); }

 private:
  EmbeddedSessionPtr session_;
};

class ObjectDialog final : public PcObjectDialog {
 public:
  ObjectDialog(EmbeddedSessionPtr session, int displayMode) : session_(std::move(session)) {
    request_.displayMode = displayMode;
  }
  void SetObject(PcObjectPtr object) override { objects_ = {std::move(object)}; }
  void SetObjects(PcObjectListPtr objects) override {
    objects_.clear();
    for (int i = 0; objects && i < objects->Count(); ++i)
      objects_.push_back(objects->Item(i));
  }
  void SetModeValue(int) override {}  // this host's dialog is for reading in every mode
  void SetTitle(const std::string& title) override { request_.title = title; }
  [[nodiscard]] int PageCount() const override { return objects_.empty() ? 0 : 1; }
  void SelectPage(int page) override { request_.page = page; }
  void ShowModeless() override { static_cast<void>(Show(false)); }
  [[nodiscard]] std::int16_t ShowModal() override { return Show(true); }
  [[nodiscard]] PcObjectPtr Object() const override { return objects_.empty() ? nullptr : objects_.front(); }

 private:
  std::int16_t Show(bool modal) {
    request_.modal = modal;
    request_.objects.clear();
    request_.attributes.clear();
    for (const PcObjectPtr& object : objects_)
      request_.objects.push_back(Required(object, "dialog object")->Key());
    if (const auto first = std::dynamic_pointer_cast<EmbeddedObject>(Object())) {
      for (const auto& attribute : first->Definition().Attributes()) {
        request_.attributes.emplace_back(attribute->name, first->DisplayText(attribute->name));
      }
    }
    return static_cast<std::int16_t>(session_->Core().Dialogs().ShowObject(request_));
  }

  EmbeddedSessionPtr session_;
  std::vector<PcObjectPtr> objects_;
  ObjectDialogRequest request_;
};

class ActiveWindow final : public PcActiveWindow {
 public:
  explicit ActiveWindow(EmbeddedSessionPtr session) : session_(std::move(session)) {}
  void RefreshObject(const ObjectKey& key, int mode) override {
    session_->Core().Dialogs().RefreshObject(key, mode);
  }

 private:
  EmbeddedSessionPtr session_;
};

class GuiServices final : public PcGUIServices {
 public:
  explicit GuiServices(EmbeddedSessionPtr session) : session_(std::move(session)) {}
  [[nodiscard]] std::shared_ptr<PcObjectDialog> NewObjectDialog(int displayMode) override {
    return std::make_shared<ObjectDialog>(session_, displayMode);
  }
  [[nodiscard]] std::shared_ptr<PcActiveWindow> ActiveWindow() override {
    return std::make_shared<embedded::ActiveWindow>(session_);
  }
  void ShowSystemMessage(int, int, const std::vector<std::string>& texts) override {
    session_->Core().Dialogs().ShowSystemMessage(texts);
  }

 private:
  EmbeddedSessionPtr session_;
};

class Message final : public PcMessage {
 public:
  explicit Message(EmbeddedSessionPtr session) : session_(std::move(session)) {}
  void SetAddress(const std::string& address, int kind) override {
    if (kind == kRecipientAddress) recipient_ = address;
    if (kind == kSenderAddress) sender_ = address;
  }
  void SetSubject(const std::string& subject) override { subject_ = subject; }
  void SetText(const std::string& text) override { text_ = text; }
  void Submit(int sendOption) override {
    Database& sql = session_->Sql();
    const auto& account = session_->UserAccount();
    WriteTransaction transaction(sql);
    sql.Execute(
        std::string(
            "INSERT INTO MESSAGE_STORE (ID, RECIPIENT, SENDER, SUBJECT, BODY, SEND_OPTION, SUBMITTED_BY, "
            "SUBMITTED_AT) VALUES (:id, :recipient, :sender, :subject, :body, :option, :user, ") +
            sql.Dialect().timestamp + ")",
        {Value(DrawNumber(sql, kMessageNumber)), Value(recipient_), Value(sender_), Value(subject_),
         Value(text_), Value(sendOption), account ? Value(account->loginName) : Value()});
    transaction.Commit();
  }

 private:
  EmbeddedSessionPtr session_;
  std::string recipient_;
  std::string sender_;
  std::string subject_;
  std::string text_;
};

class MessageStore final : public PcMessageStore {
 public:
  explicit MessageStore(EmbeddedSessionPtr session) : session_(std::move(session)) {}
  [[nodiscard]] std::shared_ptr<PcMessage> NewMessage() override {
    return std::make_shared<Message>(session_);
  }

 private:
  EmbeddedSessionPtr session_;
};

}  // namespace

std::shared_ptr<PcService> NewService(EmbeddedSessionPtr session, std::string_view progId) {
  if (progId == PcSessionUtil::kProgId) return std::make_shared<SessionUtil>(std::move(session));
  if (progId == PcCommonGUI::kProgId) return std::make_shared<CommonGui>(std::move(session));
  if (progId == PcGUIServices::kProgId) return std::make_shared<GuiServices>(std::move(session));
  if (progId == PcMessageStore::kProgId) return std::make_shared<MessageStore>(std::move(session));
  throw RuntimeError(error_number::kObjectNotCreatable,
                     "There is no service \"" + std::string(progId) + "\"");
}

}  // namespace tessel::embedded

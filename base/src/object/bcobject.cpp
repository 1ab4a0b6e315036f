#include "bcobject.h"

#include <windows.h>

#include <cstdarg>
#include <istream>
#include <ostream>

#include "bcids1.h"
#include "bcmsg.h"
#include "bcstream.h"
#include "kostring.h"
#include "msgformat.h"

namespace {

using bcids::kTypeCodes;
using bcids::kTypeNameBase;

const char kAssertionFailure[] = "Assertion failure";

// Class names are loaded once per code and kept for the process's life.
const char* CachedTypeName(unsigned int code) {
    static KoString* names[kTypeCodes] = {};
    if (code >= kTypeCodes)
        return "";
    if (!names[code]) {
        KoString* name = new KoString;
        if (!name->getResource(kTypeNameBase + code))
            KoErrorHook::ResetProcError(); // a code without a name is not an error here
        names[code] = name;
    }
    return names[code]->c_str();
}

} // namespace

BCObject::BCObject(unsigned int typeCode) : wType(0) {
    SetObjectType(typeCode);
}

BCObject::BCObject(const BCObject& other) : wType(other.wType) {}

BCObject& BCObject::operator=(const BCObject& other) {
    wType = other.wType;
    return *this;
}

BCObject::~BCObject() {}

const char* BCObject::GetObjectTypeStr() const {
    return CachedTypeName(GetObjectType());
}

int BCObject::Load(std::istream& is) {
    unsigned int code = 0;
    if (!BCLoadWord(is, code))
        return 0;
    return code == GetObjectType();
}

int BCObject::Save(std::ostream& os) {
    return BCSaveWord(os, GetObjectType());
}

void BCObject::Error(const char* text, unsigned int line, const char* file) {
    BCMsgInfo info = {
        BC_MSG_FAULT, 0,   text ? text : "", GetObjectTypeStr(), MB_OK | MB_ICONSTOP, this,
        file,         line};
    BCShowMsg(info);
}

void BCObject::Display(const char* prefix) {
    DispObjectMsg("%s%s", prefix ? prefix : "", GetObjectTypeStr());
}

int BCObject::DispObjectMsg(const char* format, ...) const {
    va_list args;
    va_start(args, format);
    KoString text;
    text.VSprintf(format, args);
    va_end(args);
    BCMsgInfo info = {BC_MSG_DIAGNOSTIC, 0, text.c_str(), GetObjectTypeStr(), MB_OK, this,
                      nullptr,           0};
    return BCShowMsg(info);
}

int BCObject::DispObjectMsg(unsigned int messageID, ...) const {
    va_list args;
    va_start(args, messageID);
    int result = BCShowNumberedMsg(messageID, nullptr, MB_OK | MB_ICONEXCLAMATION | MB_TASKMODAL,
                                   this, args);
    va_end(args);
    return result;
}

int BCObject::AssertType(const BCObject* object, unsigned int typeCode, const char* name,
                         unsigned int line, const char* file) {
    if (!object) {
        KoString text;
        text.Sprintf(name ? "Null pointer:  %s" : "Null pointer", name);
        Error(text.c_str(), line, file);
        return 0;
    }
    if (object->GetObjectType() != (typeCode & 0x3FFu)) {
        Error(kAssertionFailure, line, file);
        return 0;
    }
    return 1;
}

long BCAssert(BCObject* object, long condition, unsigned int line, const char* file,
              const char* text) {
    if (condition)
        return condition;
    if (!text)
        text = kAssertionFailure;
    if (object)
        object->Error(text, line, file);
    else {
        BCMsgInfo info = {
            BC_MSG_FAULT, 0, text ? text : "", nullptr, MB_OK | MB_ICONSTOP, nullptr, file, line};
        BCShowMsg(info);
    }
    return 0;
}

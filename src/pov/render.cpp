// render.cpp - the option file, "render.bat", and the ray tracer's start.
//
// The option file holds the ray tracer's switches in the form its DOS
// generation read them, exactly: a tracer of another generation is given
// a launcher that translates them (tracer/qmr-povray for POV-Ray 3.7).
// Display and palette codes, output formats and their extensions are
// tables indexed by the setting; a setting outside its table is taken as
// the table's first entry.
#include "pov/render.h"

#include <sys/types.h>
#include <unistd.h>

#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "base/message.h"
#include "base/safe_file.h"
#include "gfx/gfx.h"
#include "state.h"

namespace {

const int kMaxInheritedFd = 1024;   // descriptors above stderr closed in the child below this

const char* const kPaletteText[5] = {"3\n", "h\n", "0\n", "G\n", "T\n"};

struct OutputFormat {
    const char* extension;
    const char* format;   // the format switch, with its line end
};
// Output_Type 0 writes neither; 1..4 DEFAULT, RAW, DUMP, TARGE24.
const OutputFormat kOutput[5] = {
    {"", ""}, {".def", " +F\n"}, {".raw", " +FR\n"}, {".dmp", " +FD\n"}, {".tga", " +FT\n"},
};

void Append(std::string* out, const char* format, ...) __attribute__((format(printf, 2, 3)));
void Append(std::string* out, const char* format, ...) {
    char buf[512];
    va_list ap;
    va_start(ap, format);
    vsnprintf(buf, sizeof buf, format, ap);
    va_end(ap);
    *out += buf;
}

// The drive and directory lines of the batch file for `dir`: its first two
// characters, a change to the root, then the rest after "X:\".
void AppendDriveChange(std::string* out, const char* dir) {
    const size_t n = strlen(dir);
    out->append(dir, n < 2 ? n : 2);
    *out += "\ncd /\ncd ";
    if (n > 3) *out += dir + 3;
}

// Writes `text` to `path` through a temporary; 1 when it all arrived.
int WriteWhole(const char* path, const std::string& text) {
    SafeFile out;
    if (!SafeFile_Open(&out, path, "w")) return 0;
    fwrite(text.data(), 1, text.size(), out.f);
    return SafeFile_Commit(&out, 0);
}

}  // namespace

void Render_OptionPath(char* out, size_t size) {
    const char* dir = g.config.Scenes_Dir[0] ? g.config.Scenes_Dir : g.config.POV_DIR;
    snprintf(out, size, "%s/%s.cml", dir, g.run.Scene_Name);
}

std::string Render_OptionText() {
    const RenderSettings& r = g.render;
    const ConfigState& c = g.config;
    std::string t;
    Append(&t, "+L%s\n", c.Include_Dir);
    Append(&t, "+L%s\n", c.Scenes_Dir);
    Append(&t, "+L%s\n", c.Images_Dir);
    Append(&t, "+I%s.pov\n", g.run.Scene_Name);
    const int type = r.Output_Type >= 0 && r.Output_Type <= 4 ? r.Output_Type : 0;
    if (type != 0) {
        Append(&t, "+O%s/%s", c.Images_Dir, g.run.Image_Name);
        t += kOutput[type].extension;
        t += kOutput[type].format;
    }
    t += r.Render_Verbose ? "+V " : "-V ";
    if (r.Render_Display) {
        const int display = r.Display_Type >= 0 && r.Display_Type <= 18 ? r.Display_Type : 0;
        if (display <= 9) {
            Append(&t, "+D%d", display);
        } else {
            const char letter[2] = {(char)('A' + (display - 10)), '\0'};
            Append(&t, "+D%s", letter);
        }
        t += kPaletteText[r.Palette_Type >= 0 && r.Palette_Type <= 4 ? r.Palette_Type : 0];
    } else {
        t += "-D\n";
    }
    Append(&t, "+W%d +H%d  ", r.Render_Width, r.Render_Height);
    if (r.Render_Partial)
        Append(&t, "+SR%d +SC%d +ER%d +EC%d ", r.Start_Row, r.Start_Col, r.End_Row, r.End_Col);
    t += r.Render_Continue ? "+C\n" : "-C\n";
    if (r.Render_Quality != 9) Append(&t, "+Q%d\n", r.Render_Quality);
    if (r.Antialias_On)
        Append(&t, "+A%g +R%d +J%g\n", r.Antialias_Threshold, r.Antialias_Depth, r.Antialias_Jitter);
    else
        t += "-A\n";
    Append(&t, "+B%d ", r.Buffer_Size);
    if (r.Bounding_On) Append(&t, "+MB%d ", r.Bounding_Threshold);
    else t += "-MB ";
    Append(&t, "+MS%d \n", r.Max_Symbols);
    t += r.Render_Abort ? "+X\n" : "-X\n";
    t += r.Render_Pause ? "+P\n" : "-P\n";
    if (r.Extra_Options[0]) Append(&t, "%s\n", r.Extra_Options);
    return t;
}

std::string Render_BatText() {
    const ConfigState& c = g.config;
    char option[256];
    Render_OptionPath(option, sizeof option);
    std::string t = "@echo off\n";
    AppendDriveChange(&t, c.POV_DIR);
    Append(&t, "\n%s %s\n", c.Tracer_Program, option);
    AppendDriveChange(&t, c.QMR_DIR);
    if (g.render.Reload_After_Render) Append(&t, "\nqmr %s.qmr", g.run.workFileName);
    return t;
}

int Write_Render_Options() {
    Msg_Printf("\nMaking <%s.cml>", g.run.Scene_Name);
    char path[256];
    Render_OptionPath(path, sizeof path);
    if (!WriteWhole(path, Render_OptionText())) {
        Msg_Printf("\nError: Unable to create <%s>!", path);
        return 2;
    }
    if (g.render.Write_Render_Bat && Write_Render_Bat() == 2) return 2;
    return 1;
}

int Write_Render_Bat() {
    if (!WriteWhole("render.bat", Render_BatText())) {
        Msg_Printf("\nError: Unable to create <render.bat>!");
        return 2;
    }
    return 0;
}

int Render_StartTracer() {
    char program[256], option[256];
    snprintf(program, sizeof program, "%s/%s", g.config.POV_DIR, g.config.Tracer_Program);
    Render_OptionPath(option, sizeof option);
    const pid_t pid = fork();
    if (pid < 0) return -1;
    if (pid == 0) {
        // The modeller's handlers (orderly exit, ignored SIGFPE) are not
        // the ray tracer's business.
        for (int s : {SIGTERM, SIGINT, SIGQUIT, SIGFPE}) signal(s, SIG_DFL);
        // Nor are its open files (the side menu's, a scene being read).
        for (int fd = 3; fd < kMaxInheritedFd; fd++) close(fd);
        execl(program, program, option, (char*)nullptr);
        fprintf(stderr, "Can't exec '%s %s'!\n", program, option);
        _exit(1);   // not exit(): the parent's atexit handlers own its display
    }
    Gfx_ChildStarted(pid);
    return pid;
}

# Functions for the steps of transcripts.

# Runs the command with the fake effect. That effect copies a picture, inverts it if --invert is
# true, and shows the fault that FAKE_EFFECT names.
tesselune() { "$TESSELUNE" --effect "$FAKE_MODULE" "$@"; }

# Runs the command with the real effect.
real() { "$TESSELUNE" "$@"; }

# Prints how two pictures differ, if they do. Takes the options of idiff.
alike() {
    local said
    said=$(idiff "$@") || { echo "$said"; return 1; }
}

# Makes pictures of noise for some frames: noise 48x32 1 2 makes in.0001.png and in.0002.png.
noise() {
    local size=$1 frame words=()
    for frame in "${@:2}"; do
        words+=(--pattern "noise:type=uniform:min=0:max=1:seed=$frame" "$size" 3 -d uint8
                -o "in.000$frame.png")
    done
    oiiotool "${words[@]}"
}

# Prints the size, channels, compression, bits and mean colour of some pictures.
forms() {
    local file words=()
    for file; do
        words+=("$file" --echo '    mean colour: {TOP.AVGCOLOR}')
    done
    oiiotool --info -v "${words[@]}" | grep -e ' x ' -e channel -e compression -e Bits -e colour:
}

# Prints the mean colour of each of some areas of a picture: colours out.png 4x4+16+16
colours() {
    local area words=()
    for area in "${@:2}"; do
        words+=("$1" --cut "$area" --echo '{TOP.AVGCOLOR}')
    done
    oiiotool "${words[@]}"
}

# Prints a checksum of the pictures of a movie, or of its sound: checksum in.mkv sound
checksum() {
    local options=(-map 0:v -pix_fmt rgba -c:v rawvideo)
    if [ "${2-}" = sound ]; then
        options=(-map 0:a -c copy)
    fi
    ffmpeg -nostdin -v error -i "$1" "${options[@]}" -vsync passthrough -f md5 -
}

# Makes a movie of 50 pictures and a tone: movie in.mp4 -c:v libx264
movie() {
    ffmpeg -nostdin -v error -f lavfi -i testsrc2=size=96x64:rate=25:duration=2 \
        -f lavfi -i sine=duration=2 "${@:2}" "$1"
}

# Prints the number of a movie's frames.
frames_of() {
    ffprobe -v error -count_frames -select_streams v -show_entries stream=nb_read_frames \
        -of csv=p=0 "$1"
}

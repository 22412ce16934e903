#!/bin/sh
# Draws the sample pictures anew from drawings/*.svg: one file at least for each format and variant
# that the image engine reads. Needs rsvg-convert and ImageMagick. The results are checked in.
set -eu
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export SOURCE_DATE_EPOCH=0

draw() { # name width: an alpha PNG in the work folder
  rsvg-convert -w "$2" -o "$work/$1-$2.png" "drawings/$1.svg"
}

draw kestrel 480
draw kestrel 240
draw disc 192
draw disc 96
for icon in invoice calendar coins; do
  for size in 16 24 32 48 64 256; do draw "$icon" "$size"; done
done
draw pointer 32

strip="-strip -define png:exclude-chunk=date,time"
kestrel=$work/kestrel-240.png

# The same picture in every family.
convert "$work/kestrel-480.png" -alpha off $strip kestrel.png
convert "$work/kestrel-480.png" -alpha off -strip -quality 85 kestrel.jpg
convert "$kestrel" -alpha off -dither FloydSteinberg -colors 128 -interlace GIF kestrel.gif
convert "$kestrel" -alpha off bmp3:kestrel.bmp
convert "$kestrel" -alpha off -orient TopLeft -compress RLE kestrel.tga

# Alpha, and what becomes of it where there is one bit of it.
convert "$work/disc-192.png" $strip disc.png
convert "$work/disc-96.png" -define bmp:format=bmp4 bmp:disc.bmp
convert "$work/disc-96.png" -orient TopLeft -compress none disc.tga
convert "$work/disc-192.png" -background white -alpha background -channel A -threshold 60% +channel \
  -colors 64 disc.gif

# Depths of the bitmap and TGA families.
convert "$kestrel" -alpha off -monochrome -type bilevel bmp3:kestrel-1bit.bmp
convert "$work/coins-64.png" -background white -alpha remove -alpha off +dither -colors 16 \
  -type palette bmp3:coins-4bit.bmp
convert "$work/calendar-64.png" -background white -alpha remove -alpha off +dither -colors 200 \
  -type palette -compress RLE bmp3:calendar-8bit-rle.bmp
convert "$work/invoice-64.png" -background white -alpha remove -alpha off \
  -define bmp:subtype=RGB565 bmp:invoice-16bit.bmp
# Without an orientation convert writes the upper row first and calls it the lowest.
convert "$kestrel" -alpha off -flip -colorspace gray -compress none kestrel-gray.tga
convert "$work/coins-64.png" -flip -background white -alpha remove -alpha off +dither -colors 100 \
  -type palette coins-palette.tga

# Icons with PNG entries of 256 pixels, and a cursor whose hot spot is the tip.
for icon in invoice calendar coins; do
  convert "$work/$icon-16.png" "$work/$icon-24.png" "$work/$icon-32.png" "$work/$icon-48.png" \
    "$work/$icon-256.png" "$icon.ico"
done
convert "$work/pointer-32.png" "ico:$work/pointer.ico"
{
  printf '\000\000\002\000\001\000'
  dd if="$work/pointer.ico" bs=1 skip=6 count=4
  printf '\004\000\003\000'
  dd if="$work/pointer.ico" bs=1 skip=14
} >pointer.cur 2>/dev/null

# An animation of eight frames that plays for ever: a van, its road and its smoke go round once.
frames=
for i in 0 1 2 3 4 5 6 7; do
  frame=$work/delivery-$i
  awk -v i="$i" '{
    half = (i + 4) % 8
    gsub(/@ROAD@/, i * 3)
    gsub(/@TURN@/, i * 11.25)
    gsub(/@BOB@/, i % 4 == 1 ? -1 : 0)
    gsub(/@PUFF1@/, 14 - i * 1.4); gsub(/@SIZE1@/, 1.5 + i * 0.45)
    gsub(/@PUFF2@/, 14 - half * 1.4); gsub(/@SIZE2@/, 1.5 + half * 0.45)
    print
  }' drawings/delivery.svg >"$frame.svg"
  rsvg-convert -w 96 -o "$frame.png" "$frame.svg"
  frames="$frames $frame.png"
done
# One table for all frames; edges are mixed with a light ground, for the medium knows no half alpha.
convert $frames -background '#f4f6f9' -alpha background -channel A -threshold 45% +channel \
  +dither -colors 48 -set delay 8 -set dispose background -loop 0 +map -strip delivery.gif

; A print in one ink for GIMP: a ramp of greys with a word above it, 105 by 148 mm at 300 pixels per inch. Exported as a
; PDF with a grey image, and as one in colour, which shows what goes wrong: riders makes four plates of it.
;   gimp -i -b '(load "poster.scm")' -b '(gimp-quit 0)'
(define (film-poster mode kind file)
  (let* ((image (car (gimp-image-new 1240 1748 mode)))
         (layer (car (gimp-layer-new image 1240 1748 kind "ramp" 100 LAYER-MODE-NORMAL))))
    (gimp-image-set-resolution image 300 300)
    (gimp-image-insert-layer image layer 0 -1)
    (gimp-context-set-foreground '(0 0 0))
    (gimp-context-set-background '(255 255 255))
    (gimp-drawable-edit-fill layer FILL-WHITE)
    (gimp-image-select-rectangle image CHANNEL-OP-REPLACE 118 500 1004 1100)
    (gimp-drawable-edit-gradient-fill layer GRADIENT-LINEAR 0 FALSE 1 0 TRUE 118 500 118 1600)
    (gimp-selection-none image)
    (gimp-text-fontname image -1 118 120 "Fair" 0 TRUE 260 PIXELS "DejaVu Sans Bold")
    (file-pdf-save RUN-NONINTERACTIVE image (car (gimp-image-flatten image)) file file FALSE TRUE TRUE)))
(film-poster GRAY GRAY-IMAGE "gimp-grey.pdf")
(film-poster RGB RGB-IMAGE "gimp-colour.pdf")

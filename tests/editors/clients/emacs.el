;;; What Emacs shows of the language server, by flymake.  -*- lexical-binding: t -*-
;;
;;   emacs --batch -l emacs.el --eval "(session 'COMMAND)"
;;
;; COMMAND is what lets users choose a fix.  Waits for what has to come, however long it takes.

(require 'cl-lib)
(package-activate-all)
(load "~/.emacs.d/init.el")
;; Fixes are for choosing, even if there is only one.
(defvar lsp-auto-execute-action)
(setq lsp-auto-execute-action nil)

(defun show (&rest texts)
  (write-region (concat (apply #'concat texts) "\n") nil (getenv "OUT") t 'quiet))

;; Without a terminal, Emacs is never idle by itself.
(defun wait (condition)
  (while (not (funcall condition))
    (mapc #'timer-event-handler (copy-sequence timer-idle-list))
    (accept-process-output nil 0.005)))

;; As if typed.
(defun keys (text) (execute-kbd-macro (kbd text)))

(defun line-text () (buffer-substring-no-properties (line-beginning-position) (line-end-position)))

;; What is on the screen below the line.
(defun underlines ()
  (cl-remove-if-not (lambda (overlay) (overlay-get overlay 'flymake-diagnostic))
                    (overlays-in (point-min) (point-max))))

(defun show-finding (overlay)
  (let ((finding (overlay-get overlay 'flymake-diagnostic)))
    (goto-char (overlay-start overlay))
    (show (line-text))
    (show (make-string (current-column) ?\s)
          (make-string (- (overlay-end overlay) (overlay-start overlay)) ?^))
    (show (string-remove-prefix "flymake-" (symbol-name (overlay-get overlay 'face)))
          ": " (flymake-diagnostic-text finding))))

(defun type-typo ()
  (show "A typo at the end of line 29:")
  (goto-char (point-min))
  (forward-line 28)
  (end-of-line)
  (keys "W")
  (wait #'underlines)
  (mapc #'show-finding (underlines))
  (show ""))

(defun take-fix (command)
  (cl-letf (((symbol-function 'completing-read)
             (lambda (_prompt choices &rest _)
               (let ((choice (car (all-completions "" choices))))
                 (show "The fix, " choice ":")
                 choice)))
            ;; Not the mouse, for which it would be a menu.
            (last-nonmenu-event ?x))
    (call-interactively command))
  (wait (lambda () (not (underlines))))
  (show (line-text))
  (show "no findings"))

(defun session (command)
  (find-file "fans.rux")
  (type-typo)
  (take-fix command))
